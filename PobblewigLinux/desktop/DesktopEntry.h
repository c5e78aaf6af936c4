#pragma once

#include <QByteArrayView>
#include <QStringList>

#include <optional>

namespace pobblewig {

/// An application as its desktop file describes it.
struct DesktopEntry {
    /// The path of the file below its applications directory, with "-" for "/" and without the
    /// suffix.
    QString id;
    /// The name for the user.
    QString name;
    QString windowClass = {};
    /// The file name of the program; empty if it is one that runs others.
    QString program = {};
    bool isShownInMenus = true;
    /// For a file in an autostart directory.
    bool startsWithDesktop = true;

    bool operator==(const DesktopEntry&) const = default;
};

namespace DesktopEntryLogic {

/// Returns nothing if the file does not describe an application, or marks it as removed.
/// `languages` are names such as "de_CH", the preferred one first; if the file has none of them,
/// its default name is used.
std::optional<DesktopEntry> parse(
    const QString& id, QByteArrayView file, const QStringList& languages);

} // namespace DesktopEntryLogic

} // namespace pobblewig
