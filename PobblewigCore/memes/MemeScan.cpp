#include "memes/MemeScan.h"

#include <algorithm>

namespace pobblewig {

namespace {

/// The folder of the memes that come with the program, as one of the folders of a scan.
FolderState bundledFolder(const MemeScan::Orders& orders, std::vector<MemeProblem>& problems)
{
    FolderState folder { .id = {}, .name = {}, .entries = {} };
    const auto& directory = orders.places.bundled;
    folder.enabled = directory && orders.settings.isEnabled(MemeFolders::defaultFolderID);
    if (!folder.enabled)
        return folder;
    folder.directory = *directory;
    if (auto manifest = MemeFolderReader::readManifest(*directory, {}, std::nullopt, problems))
        folder.entries = std::move(manifest->memes);
    return folder;
}

bool haveSameStamps(const QDir& directory, const MemeStamps& now, const MemeStamps& before)
{
    const auto isSame = [&](const QString& path) {
        const auto a = now.find(path);
        const auto b = before.find(path);
        return a == now.end() ? b == before.end() : b != before.end() && a->second == b->second;
    };
    return isSame(directory.absolutePath())
        && isSame(directory.filePath(QLatin1String(MemeManifest::fileName)));
}

/// The folder as the last scan read it, if it need not be read again.
const FolderState* unchanged(
    const MemeScan::Orders& orders, const DiscoveredFolder& folder, const MemeStamps& stamps)
{
    if (orders.readsAllFolders || !orders.previous)
        return nullptr;
    const auto& before = orders.previous->folderStates;
    const auto found = std::ranges::find(before, folder.id, &FolderState::id);
    const auto isSame = found != before.end() && found->directory == folder.directory
        && haveSameStamps(folder.directory, stamps, orders.previous->stamps);
    return isSame ? &*found : nullptr;
}

FolderState readFolder(
    const MemeScan::Orders& orders, const DiscoveredFolder& folder, MemeScan& scan)
{
    auto& problems = scan.readingProblems[folder.id];
    FolderState state { .id = folder.id,
        .name = folder.name,
        .isCommunity = folder.isCommunity,
        .enabled = orders.settings.isEnabled(folder.id),
        .directory = folder.directory,
        .entries = {} };
    if (const auto* before = unchanged(orders, folder, scan.stamps)) {
        problems = orders.previous->readingProblems.at(folder.id);
        state.entries = before->entries;
    } else {
        state.entries = MemeFolderReader::readEntries(state, problems);
    }
    return state;
}

void readFolders(const MemeScan::Orders& orders, MemeScan& scan)
{
    std::vector<DiscoveredFolder> folders { { .id = MemeFolders::defaultFolderID,
        .name = MemeFolders::defaultFolderName,
        .directory = orders.places.user } };
    auto found = MemeFolders::discoverFolders(orders.places.user);
    std::ranges::move(found.folders, std::back_inserter(folders));
    scan.remarks = found.remarks;
    for (const auto& folder : folders)
        scan.folderStates.push_back(readFolder(orders, folder, scan));
}

std::vector<MemePictureShelf::Wish> wishes(const std::vector<const FolderState*>& folders)
{
    std::vector<MemePictureShelf::Wish> wishes;
    for (const auto* folder : folders) {
        for (const auto& entry : folder->entries) {
            if (MemeFolderReader::canBePicked(entry))
                wishes.push_back({ .path = folder->directory.filePath(entry.file),
                    .rests = folder->id.isEmpty() });
        }
    }
    return wishes;
}

/// The memes and problems of one folder.
class Validation {
public:
    Validation(MemeScan& scan, std::map<QString, Meme>& memes)
        : m_scan(scan)
        , m_memes(memes)
    {
    }

    void add(const FolderState& folder)
    {
        const auto isBundled = folder.id.isEmpty();
        const auto id = isBundled ? std::nullopt : std::optional(folder.id);
        const auto context = isBundled ? std::nullopt : folder.issueContext();
        for (const auto& entry : folder.entries) {
            add(MemeFolderReader::validate(entry, folder.directory, id, context,
                    [this](const QString& path) { return animation(path); }),
                folder.directory);
            if (MemeFolderReader::canBePicked(entry))
                addRemark(MemeFolderReader::remark(entry, context));
        }
    }

private:
    void add(tl::expected<Meme, MemeProblem> outcome, const QDir& directory)
    {
        if (!outcome) {
            m_scan.problems.push_back(std::move(outcome.error()));
            return;
        }
        const auto path = directory.filePath(outcome->id);
        if (m_scan.pictures.find(path)->isResting)
            outcome->resting = path;
        m_memes.insert_or_assign(outcome->id, *std::move(outcome));
    }

    void addRemark(const std::optional<QString>& remark)
    {
        if (remark)
            m_scan.remarks.append(*remark);
    }

    tl::expected<MemeAnimation, MemePictureProblem> animation(const QString& path) const
    {
        const auto* const picture = m_scan.pictures.find(path);
        return picture ? picture->animation : tl::unexpected(MemePictureProblem::missing);
    }

    MemeScan& m_scan;
    std::map<QString, Meme>& m_memes;
};

/// Later folders win.
void validate(const std::vector<const FolderState*>& folders, MemeScan& scan)
{
    std::map<QString, Meme> memes;
    Validation validation(scan, memes);
    for (const auto* folder : folders)
        validation.add(*folder);
    for (auto& [id, meme] : memes)
        scan.memes.push_back(std::move(meme));
}

} // namespace

std::shared_ptr<const MemeScan> MemeScan::run(const Orders& orders, QThreadPool& pool,
    MemeScanProgress& progress, const std::stop_token& stop)
{
    const auto scan = std::make_shared<MemeScan>();
    scan->stamps = memeStamps(orders.places);
    scan->folderSettings = orders.settings;
    readFolders(orders, *scan);
    const auto bundled = bundledFolder(orders, scan->readingProblems[QString()]);
    auto folders = MemeFolders::loadOrder(scan->folderStates);
    std::erase_if(folders, [](const auto* folder) { return !folder->enabled; });
    if (bundled.enabled)
        folders.insert(folders.begin(), &bundled);
    scan->pictures =
        MemePictureShelf(wishes(folders), orders.previous ? &orders.previous->pictures : nullptr,
            *orders.decoder, pool, progress, stop);
    if (stop.stop_requested())
        return nullptr;
    for (const auto& [id, problems] : scan->readingProblems)
        std::ranges::copy(problems, std::back_inserter(scan->problems));
    validate(folders, *scan);
    return scan;
}

} // namespace pobblewig
