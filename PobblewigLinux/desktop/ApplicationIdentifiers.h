#pragma once

#include <QString>

#include <optional>
#include <span>

/// Maps the desktops' names of applications to identifiers that the whole program uses.
namespace pobblewig::ApplicationIdentifiers {

/// A reverse-DNS identifier such as "com.google.Chrome", or nothing for an application that is not
/// in the table. The name is a desktop file's id, a window's class or instance, or a Flatpak or
/// Snap id; case is ignored. This program is "com.pobblewig.app".
std::optional<QString> identifier(const QString& name);

/// Password managers that exist only on Linux. They are never watched or captured, regardless of
/// the settings.
std::span<const QStringView> alwaysExcluded();

} // namespace pobblewig::ApplicationIdentifiers
