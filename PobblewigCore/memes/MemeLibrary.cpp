#include "memes/MemeLibrary.h"

#include "foundation/JSONFileStore.h"
#include "foundation/Log.h"
#include "memes/MemeStarterFiles.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QtConcurrentRun>

namespace pobblewig {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("MemeLibrary", text);
}

int taggedCount(const std::vector<MemeManifestEntry>& entries)
{
    return int(std::ranges::count_if(entries, [](const auto& entry) {
        return std::ranges::any_of(
            entry.emotions, [](const auto& tag) { return MemeTags::emotion(tag).has_value(); });
    }));
}

} // namespace

MemeLibrary::MemeLibrary(const std::optional<DataDirectory>& userDirectory,
    std::optional<QDir> bundledDirectory, std::shared_ptr<MemePictureDecoding> decoder)
    : m_userDirectory(userDirectory)
    , m_decoder(std::move(decoder))
{
    m_places.bundled = std::move(bundledDirectory);
    if (!m_userDirectory)
        return;
    m_places.user = m_userDirectory->path;
    MemeStarterFiles::seed(m_places.user, *m_userDirectory->operations);
}

MemeLibrary::~MemeLibrary()
{
    stopScan();
}

Task<> MemeLibrary::reload()
{
    return scanAgain(true);
}

Task<> MemeLibrary::reloadIfChanged()
{
    if (!hasLoaded())
        co_return co_await reload();
    const auto life = m_life.watch();
    const auto stamps =
        co_await QtConcurrent::run(&m_pool, [places = m_places] { return memeStamps(places); });
    if (life.expired() || stamps == m_scan->stamps)
        co_return;
    co_await scanAgain(false);
}

void MemeLibrary::stopScan()
{
    m_stop.request_stop();
}

QStringList MemeLibrary::issues() const
{
    QStringList issues;
    for (const auto& problem : problems())
        issues.append(problem.text);
    return issues;
}

QString MemeLibrary::summaryLine() const
{
    if (!hasLoaded())
        return QStringLiteral("…");
    if (isEmpty() && problems().empty())
        return tr(QT_TRANSLATE_NOOP("MemeLibrary", "empty — add memes to get started"));
    const auto memes = tr(QT_TRANSLATE_NOOP("MemeLibrary", "%1 memes")).arg(count());
    if (problems().empty())
        return memes;
    return memes + tr(QT_TRANSLATE_NOOP("MemeLibrary", " · %1 skipped")).arg(skippedCount());
}

std::vector<MemeFolder> MemeLibrary::folders() const
{
    std::vector<MemeFolder> folders;
    for (const auto& state : folderStates()) {
        folders.push_back({ .id = state.id,
            .name = state.name,
            .isCommunity = state.isCommunity,
            .enabled = state.enabled,
            .directory = state.directory,
            .memeCount = taggedCount(state.entries),
            .entryCount = int(state.entries.size()) });
    }
    return folders;
}

std::vector<MemeManifestEntry> MemeLibrary::userEntries() const
{
    return folderEntries(MemeFolders::defaultFolderID);
}

std::vector<MemeManifestEntry> MemeLibrary::folderEntries(const QString& folderID) const
{
    const auto found = std::ranges::find(folderStates(), folderID, &FolderState::id);
    return found == folderStates().end() ? std::vector<MemeManifestEntry>() : found->entries;
}

std::optional<Meme> MemeLibrary::pick(MemeEmotion emotion,
    const std::optional<QString>& excludingID, const std::function<double()>& random) const
{
    const auto* const meme = m_picker.pick(emotion, excludingID, random);
    return meme ? std::optional(*meme) : std::nullopt;
}

std::map<MemeMascotSlot, Meme> MemeLibrary::mascotMemes() const
{
    return pobblewig::mascotMemes(memes());
}

Task<MemeAnimation> MemeLibrary::animation(Meme meme)
{
    if (!meme.resting)
        co_return meme.animation;
    auto whole = co_await QtConcurrent::run(&m_pool,
        [decoder = m_decoder, path = *meme.resting] { return MemePictures::read(path, *decoder); });
    co_return whole ? *std::move(whole) : meme.animation;
}

const MemeScan& MemeLibrary::scan() const
{
    static const MemeScan nothing;
    return m_scan ? *m_scan : nothing;
}

Task<> MemeLibrary::scanAgain(bool readsAllFolders)
{
    const auto life = m_life.watch();
    while (!life.expired() && isScanning())
        co_await QFuture(m_underWay);
    if (life.expired())
        co_return;
    if (!m_userDirectory)
        co_return take(std::make_shared<MemeScan>());
    m_problem = m_decoder->prepare();
    m_stop = {};
    m_underWay = QtConcurrent::run(
        &m_pool, [this, orders = orders(readsAllFolders), stop = m_stop.get_token()] {
            return MemeScan::run(orders, m_pool, m_progress, stop);
        });
    auto scan = co_await QFuture(m_underWay);
    if (!life.expired() && scan)
        take(std::move(scan));
}

MemeScan::Orders MemeLibrary::orders(bool readsAllFolders) const
{
    const JSONFileStore file(*m_userDirectory, QLatin1String(FolderSettings::fileName));
    return { .places = m_places,
        .settings = file.load<FolderSettings>().value_or(FolderSettings()),
        .decoder = m_decoder,
        .previous = m_scan,
        .readsAllFolders = readsAllFolders };
}

void MemeLibrary::take(std::shared_ptr<const MemeScan> scan)
{
    m_scan = std::move(scan);
    m_picker = MemePicker(m_scan->memes);
    for (const auto& remark : m_scan->remarks)
        Log::line(QStringLiteral("buddy: meme library: ") + remark);
    for (const auto& problem : problems())
        Log::line(QStringLiteral("buddy: meme library: skipped ") + problem.text);
    ++m_scanCount;
    onScanned();
}

} // namespace pobblewig
