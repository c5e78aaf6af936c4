#pragma once

#include <QByteArrayView>
#include <QStringList>

#include <optional>

namespace pobblewig {

/// An application as its desktop file describes it.
struct DesktopEntry {
    /// The path of the file below its directory of applications, "/" as "-", without the ending.
    QString id;
    /// For people.
    QString name;
    QString windowClass = {};
    /// The file name of the program; empty if it is one that runs others.
    QString program = {};
    bool isShownInMenus = true;
    /// Of a file that lies where desktops look for what to start.
    bool startsWithDesktop = true;

    bool operator==(const DesktopEntry&) const = default;
};

namespace DesktopEntryLogic {

/// Nothing if the file does not describe an application, or describes one that was taken away.
/// The languages are such as "de_CH", the best first; without any of them the name is the file's
/// plain one.
std::optional<DesktopEntry> parse(
    const QString& id, QByteArrayView file, const QStringList& languages);

} // namespace DesktopEntryLogic

} // namespace pobblewig
