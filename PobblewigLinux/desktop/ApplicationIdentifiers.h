#pragma once

#include <QString>

#include <optional>
#include <span>

/// What the whole system calls an application, from what desktops call it.
namespace pobblewig::ApplicationIdentifiers {

/// A reverse-DNS identifier such as "com.google.Chrome", or nothing for an application that is not
/// in the table. The name is a desktop file's id, a window's class or instance, or an id of Flatpak
/// or Snap, in any case. Our own program is "com.pobblewig.app".
std::optional<QString> identifier(const QString& name);

/// Password managers that only exist on Linux. They are never watched and never captured, whatever
/// the settings say.
std::span<const QStringView> alwaysExcluded();

} // namespace pobblewig::ApplicationIdentifiers
