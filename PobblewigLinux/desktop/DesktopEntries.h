#pragma once

#include "PobblewigLinux/desktop/DesktopEntry.h"
#include "PobblewigLinux/desktop/WindowIdentity.h"

#include <QDateTime>
#include <QHash>

#include <vector>

namespace pobblewig {

/// The desktop files of the applications that are installed. They are read at the first question,
/// and again when one was added to a directory or removed from it.
class DesktopEntries {
public:
    /// Of two files with the same id the one in the earlier directory holds.
    DesktopEntries(QStringList directories, QStringList languages);

    /// Those of the user and of the system, and where Flatpak and Snap put theirs.
    static QStringList systemDirectories();
    /// Those that the user wants to read, the best first.
    static QStringList systemLanguages();

    /// The application that a window belongs to: by its application id, else by its class, else by
    /// its instance. These two are looked for among the classes that desktop files announce, the
    /// files' own ids, and at last the programs that they start.
    std::optional<DesktopEntry> find(const WindowIdentity& window);

private:
    /// By a name in lower case.
    using Index = QHash<QString, std::size_t>;

    void refreshIfChanged();
    void load();
    void loadFile(const QString& path, const QString& id);
    void buildIndexes();
    std::optional<DesktopEntry> entry(const Index& index, const QString& name) const;

    QStringList m_directories;
    QStringList m_languages;
    /// Of all directories that were read, whether they exist or not.
    std::vector<std::pair<QString, QDateTime>> m_modificationTimes;
    std::vector<DesktopEntry> m_entries;
    Index m_ids;
    Index m_lastPartsOfIDs;
    Index m_windowClasses;
    Index m_programs;
};

} // namespace pobblewig
