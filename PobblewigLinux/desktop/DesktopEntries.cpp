#include "PobblewigLinux/desktop/DesktopEntries.h"

#include <QDirIterator>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>

namespace pobblewig {

namespace {

// Far more than any desktop has; a limit against directories that were filled maliciously.
constexpr int mostFiles = 5000;
constexpr qint64 longestFile = 256 * 1024;

const auto ending = QStringLiteral(".desktop");

QDateTime modificationTime(const QString& directory)
{
    return QFileInfo(directory).lastModified();
}

/// The time for later comparison. Returns nothing if the directory has just changed, since the next
/// change may have the same time.
QDateTime settledTime(const QString& directory)
{
    constexpr qint64 milliseconds = 1000;
    const auto time = modificationTime(directory);
    return time.msecsTo(QDateTime::currentDateTime()) > milliseconds ? time : QDateTime();
}

/// The paths below a directory, in an order that does not depend on the file system.
QStringList pathsBelow(const QString& directory)
{
    QStringList paths;
    QDirIterator found(directory, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot | QDir::Readable,
        QDirIterator::Subdirectories);
    while (found.hasNext() && paths.size() < mostFiles)
        paths += found.next();
    paths.sort();
    return paths;
}

} // namespace

DesktopEntries::DesktopEntries(QStringList directories, QStringList languages)
    : m_directories(std::move(directories))
    , m_languages(std::move(languages))
{
}

QStringList DesktopEntries::systemDirectories()
{
    auto data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    data += data.value(0) + QStringLiteral("/flatpak/exports/share");
    data += QStringLiteral("/var/lib/flatpak/exports/share");
    data += QStringLiteral("/var/lib/snapd/desktop");
    data.removeDuplicates();
    for (auto& directory : data)
        directory += QStringLiteral("/applications");
    return data;
}

QStringList DesktopEntries::systemLanguages()
{
    QStringList languages;
    for (auto language : QLocale::system().uiLanguages()) {
        language.replace(u'-', u'_');
        languages += language;
        languages += language.section(u'_', 0, 0);
    }
    languages.removeDuplicates();
    return languages;
}

std::optional<DesktopEntry> DesktopEntries::find(const WindowIdentity& window)
{
    refreshIfChanged();
    if (auto found = entry(m_ids, window.applicationID))
        return found;
    for (const auto& name : { window.windowClass, window.instance }) {
        for (const auto* index : { &m_windowClasses, &m_ids, &m_lastPartsOfIDs, &m_programs }) {
            if (auto found = entry(*index, name))
                return found;
        }
    }
    return std::nullopt;
}

void DesktopEntries::refreshIfChanged()
{
    const auto isUnchanged = [](const auto& directory) {
        return modificationTime(directory.first) == directory.second;
    };
    if (m_modificationTimes.empty() || !std::ranges::all_of(m_modificationTimes, isUnchanged))
        load();
}

void DesktopEntries::load()
{
    m_entries.clear();
    m_modificationTimes.clear();
    QSet<QString> ids;
    for (const auto& directory : m_directories) {
        m_modificationTimes.emplace_back(directory, settledTime(directory));
        for (const auto& path : pathsBelow(directory)) {
            if (QFileInfo(path).isDir())
                m_modificationTimes.emplace_back(path, settledTime(path));
            if (!path.endsWith(ending) || ids.size() >= mostFiles)
                continue;
            auto id = path.sliced(directory.size() + 1).chopped(ending.size());
            id.replace(u'/', u'-');
            if (!ids.contains(id))
                loadFile(path, id);
            ids += id;
        }
    }
    buildIndexes();
}

void DesktopEntries::loadFile(const QString& path, const QString& id)
{
    QFile file(path);
    if (file.size() > longestFile || !file.open(QIODevice::ReadOnly))
        return;
    if (auto entry = DesktopEntryLogic::parse(id, file.read(longestFile), m_languages))
        m_entries.push_back(std::move(*entry));
}

void DesktopEntries::buildIndexes()
{
    // If two programs have the same name, the one in menus wins.
    std::ranges::stable_partition(m_entries, &DesktopEntry::isShownInMenus);
    for (auto* index : { &m_ids, &m_lastPartsOfIDs, &m_windowClasses, &m_programs })
        index->clear();
    const auto add = [](Index& index, const QString& name, std::size_t entry) {
        if (const auto key = name.toLower(); !key.isEmpty() && !index.contains(key))
            index.insert(key, entry);
    };
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const auto& entry = m_entries[i];
        add(m_ids, entry.id, i);
        add(m_lastPartsOfIDs, entry.id.section(u'.', -1), i);
        add(m_windowClasses, entry.windowClass, i);
        add(m_programs, entry.program, i);
    }
}

std::optional<DesktopEntry> DesktopEntries::entry(const Index& index, const QString& name) const
{
    const auto found = index.find(name.toLower());
    return found == index.end() ? std::nullopt : std::optional(m_entries[found.value()]);
}

} // namespace pobblewig
