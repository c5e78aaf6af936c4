#pragma once

#include "PobblewigLinux/desktop/DesktopEntry.h"
#include "PobblewigLinux/desktop/WindowIdentity.h"

#include <QDateTime>
#include <QHash>

#include <vector>

namespace pobblewig {

/// The desktop files of the installed applications. Reads them at the first query, and again when a
/// file was added to or removed from a directory.
class DesktopEntries {
public:
    /// If two files have the same id, the one in the earlier directory wins.
    DesktopEntries(QStringList directories, QStringList languages);

    /// The directories of the user, the system, Flatpak and Snap.
    static QStringList systemDirectories();
    /// The user's languages, the preferred one first.
    static QStringList systemLanguages();

    /// The application of a window: by application id, else by window class, else by instance. The
    /// latter two are compared with the classes in desktop files, then with the files' ids, then
    /// with the programs that they start.
    std::optional<DesktopEntry> find(const WindowIdentity& window);

private:
    /// Keys are names in lower case.
    using Index = QHash<QString, std::size_t>;

    void refreshIfChanged();
    void load();
    void loadFile(const QString& path, const QString& id);
    void buildIndexes();
    std::optional<DesktopEntry> entry(const Index& index, const QString& name) const;

    QStringList m_directories;
    QStringList m_languages;
    /// The times of all directories that were read, even those that do not exist.
    std::vector<std::pair<QString, QDateTime>> m_modificationTimes;
    std::vector<DesktopEntry> m_entries;
    Index m_ids;
    Index m_lastPartsOfIDs;
    Index m_windowClasses;
    Index m_programs;
};

} // namespace pobblewig
