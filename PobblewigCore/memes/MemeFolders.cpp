#include "memes/MemeFolders.h"

#include "memes/MemeEmotion.h"

namespace pobblewig {

std::optional<QString> FolderState::issueContext() const
{
    if (id == MemeFolders::defaultFolderID)
        return std::nullopt;
    return isCommunity ? MemeFolders::communityDirectoryName + u'/' + name : name;
}

bool FolderSettings::isEnabled(const QString& folderID) const
{
    const auto& switches =
        folderID.startsWith(MemeFolders::communityIDPrefix) ? community : folders;
    const auto found = switches.find(folderID);
    return found == switches.end() || found->second.enabled;
}

void FolderSettings::setEnabled(const QString& folderID, bool isEnabled)
{
    auto& switches = folderID.startsWith(MemeFolders::communityIDPrefix) ? community : folders;
    switches[folderID] = { isEnabled };
}

namespace MemeFolders {

namespace {

/// Adds the folders below a directory to those that were found.
class Finder {
public:
    void add(const QDir& directory, const QString& prefix, const QString& kind)
    {
        const auto name = directory.dirName();
        const auto slug = slugifiedFolderID(name);
        if (slug.isEmpty()) {
            discovery.remarks.append(
                QStringLiteral("ignoring %1 with unusable name %2").arg(kind, name));
            return;
        }
        discovery.folders.push_back({ .id = uniqueFolderID(prefix + slug, m_used),
            .name = name,
            .isCommunity = !prefix.isEmpty(),
            .directory = directory });
    }

    FolderDiscovery discovery;

private:
    std::set<QString> m_used { defaultFolderID };
};

} // namespace

QString slugifiedFolderID(const QString& name)
{
    QString slug;
    auto isApart = false;
    for (const auto character : name.toLower().toUcs4()) {
        if (!QChar::isLetterOrNumber(character)) {
            isApart = !slug.isEmpty();
            continue;
        }
        if (std::exchange(isApart, false))
            slug += u'-';
        slug += QStringView(QChar::fromUcs4(character));
    }
    return slug;
}

QString uniqueFolderID(const QString& slug, std::set<QString>& used)
{
    auto id = slug;
    for (auto number = 2; !used.insert(id).second; ++number)
        id = QStringLiteral("%1-%2").arg(slug).arg(number);
    return id;
}

QFileInfoList visibleContents(const QDir& directory)
{
    // Sorted by code points below: the collation of a locale would change ids.
    auto contents =
        directory.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Unsorted);
    contents.removeIf([](const QFileInfo& item) { return item.fileName().startsWith(u'.'); });
    std::ranges::sort(contents, {}, &QFileInfo::fileName);
    return contents;
}

std::vector<QDir> subdirectories(const QDir& directory)
{
    std::vector<QDir> directories;
    for (const auto& item : visibleContents(directory)) {
        if (item.isDir())
            directories.emplace_back(item.absoluteFilePath());
    }
    return directories;
}

FolderDiscovery discoverFolders(const QDir& userDirectory)
{
    Finder finder;
    auto& container = finder.discovery.communityContainer;
    for (const auto& directory : subdirectories(userDirectory)) {
        const auto isContainer =
            directory.dirName().compare(communityDirectoryName, Qt::CaseInsensitive) == 0;
        if (isContainer)
            container = directory;
        else
            finder.add(directory, {}, QStringLiteral("folder"));
    }
    if (container) {
        for (const auto& directory : subdirectories(*container))
            finder.add(directory, communityIDPrefix, QStringLiteral("community folder"));
    }
    return std::move(finder.discovery);
}

std::vector<const FolderState*> loadOrder(const std::vector<FolderState>& folders)
{
    std::vector<const FolderState*> order;
    for (const auto& folder : folders)
        order.push_back(&folder);
    const auto rank = [](const FolderState* folder) {
        const auto kind = folder->isCommunity ? 0 : folder->id == defaultFolderID ? 2 : 1;
        return std::pair(kind, folder->name);
    };
    std::ranges::stable_sort(order, {}, rank);
    return order;
}

} // namespace MemeFolders

} // namespace pobblewig
