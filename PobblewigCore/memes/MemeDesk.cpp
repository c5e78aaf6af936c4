#include "memes/MemeDesk.h"

#include "foundation/JSONFileStore.h"
#include "foundation/Log.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QCoroFuture>
#include <QtConcurrentRun>

namespace pobblewig {

namespace {

constexpr int longestName = 40;

QString tr(const char* text)
{
    return QCoreApplication::translate("MemeDesk", text);
}

/// "cat-2.gif" if "cat.gif" is taken.
QString freePath(const QDir& directory, const QString& file)
{
    const auto dot = file.lastIndexOf(u'.');
    const auto stem = dot > 0 ? file.left(dot) : file;
    const auto ending = file.mid(stem.size());
    auto path = directory.filePath(file);
    for (auto number = 2; QFileInfo::exists(path); ++number)
        path = directory.filePath(QStringLiteral("%1-%2%3").arg(stem).arg(number).arg(ending));
    return path;
}

MemeDesk::Outcome copied(const QStringList& paths, const QDir& directory)
{
    for (const auto& path : paths) {
        const QFileInfo file(path);
        if (!MemePictures::isPicture(path) || file.size() > MemePictures::mostBytes)
            return tl::unexpected(tr(QT_TRANSLATE_NOOP("MemeDesk",
                                         "“%1” is not a GIF, PNG, JPEG or WebP picture of "
                                         "at most 32 MB."))
                                      .arg(file.fileName()));
        if (!QFile::copy(path, freePath(directory, file.fileName())))
            return tl::unexpected(tr(QT_TRANSLATE_NOOP("MemeDesk", "“%1” could not be copied."))
                                      .arg(file.fileName()));
    }
    return {};
}

QByteArray asPNG(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

auto entryOf(FolderState& folder, const QString& file)
{
    return std::ranges::find(folder.entries, file, &MemeManifestEntry::file);
}

std::vector<QString> slotTags(const MemeManifestEntry& entry)
{
    std::vector<QString> tags;
    std::ranges::copy_if(entry.emotions, std::back_inserter(tags),
        [](const QString& tag) { return MemeTags::slot(tag).has_value(); });
    return tags;
}

/// Whether anything was taken.
bool takeSlots(FolderState& folder, const std::vector<QString>& tags, const QString& except)
{
    auto isChanged = false;
    for (auto& entry : folder.entries) {
        if (entry.file != except)
            isChanged |= std::erase_if(entry.emotions, [&](const QString& tag) {
                return std::ranges::find(tags, tag) != tags.end();
            }) > 0;
    }
    return isChanged;
}

bool hasUnreadableManifest(const std::vector<MemeProblem>& problems, const QString& folderID)
{
    return std::ranges::any_of(problems, [&](const MemeProblem& problem) {
        return problem.folderID == folderID && problem.file.isEmpty();
    });
}

QString notSaved(const FileError& error)
{
    return tr(QT_TRANSLATE_NOOP("MemeDesk", "The change could not be saved: %1."))
        .arg(error.description());
}

} // namespace

MemeDesk::MemeDesk(MemeLibrary& library, const std::optional<DataDirectory>& userDirectory)
    : m_library(library)
    , m_userDirectory(userDirectory)
{
}

auto MemeDesk::makeFolder(QString name) -> Task<Outcome>
{
    name = name.trimmed();
    const auto isUsable = !MemeFolders::slugifiedFolderID(name).isEmpty()
        && name.size() <= longestName && !name.contains(u'/') && !name.startsWith(u'.');
    if (!m_userDirectory || !isUsable)
        co_return tl::unexpected(tr(QT_TRANSLATE_NOOP(
            "MemeDesk", "A folder needs a name with letters or digits, without “/”.")));
    const QDir& user = m_userDirectory->path;
    const auto isTaken =
        user.entryList(QDir::AllEntries | QDir::Hidden).contains(name, Qt::CaseInsensitive);
    if (isTaken || !user.mkdir(name))
        co_return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "There is already something called “%1”.")).arg(name));
    co_return co_await finished({});
}

auto MemeDesk::setFolderEnabled(QString folderID, bool isEnabled) -> Task<Outcome>
{
    co_await m_library.reloadIfChanged();
    auto settings = m_library.folderSettings();
    settings.setEnabled(folderID, isEnabled);
    co_return co_await finished(saveFolderSettings(settings));
}

auto MemeDesk::addFiles(QString folderID, QStringList paths) -> Task<Outcome>
{
    const auto folder = co_await openFolder(folderID);
    if (!folder)
        co_return tl::unexpected(folder.error());
    auto outcome = co_await QtConcurrent::run(copied, paths, folder->directory);
    co_return co_await finished(std::move(outcome));
}

auto MemeDesk::addPicture(QString folderID, QImage picture, QDate today) -> Task<Outcome>
{
    const auto folder = co_await openFolder(folderID);
    if (!folder)
        co_return tl::unexpected(folder.error());
    const auto bytes = co_await QtConcurrent::run(asPNG, std::move(picture));
    const auto file = QStringLiteral("pasted-%1.png").arg(today.toString(Qt::ISODate));
    auto outcome =
        writeDurably(freePath(folder->directory, file), bytes, *m_userDirectory->operations)
            .map_error(notSaved);
    co_return co_await finished(std::move(outcome));
}

auto MemeDesk::change(QString folderID, MemeManifestEntry entry) -> Task<Outcome>
{
    auto folder = co_await openFolder(folderID);
    if (!folder)
        co_return tl::unexpected(folder.error());
    const auto found = entryOf(*folder, entry.file);
    if (found == folder->entries.end())
        co_return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "“%1” is not there any more.")).arg(entry.file));
    *found = entry;
    takeSlots(*folder, slotTags(entry), entry.file);
    auto outcome = writeManifest(*folder);
    if (outcome)
        outcome = freeSlots(entry, folderID);
    co_return co_await finished(std::move(outcome));
}

auto MemeDesk::remove(QString folderID, QString file) -> Task<tl::expected<Removed, QString>>
{
    auto folder = co_await openFolder(folderID);
    if (!folder)
        co_return tl::unexpected(folder.error());
    const auto found = entryOf(*folder, file);
    if (found == folder->entries.end())
        co_return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "“%1” is not there any more.")).arg(file));
    Removed removed { folderID, *found, folder->directory.filePath(file), {} };
    folder->entries.erase(found);
    if (QFileInfo::exists(removed.path) && !QFile::moveToTrash(removed.path, &removed.pathInTrash))
        co_return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "“%1” could not be moved to the trash.")).arg(file));
    const auto outcome = co_await finished(writeManifest(*folder));
    if (!outcome)
        co_return tl::unexpected(outcome.error());
    co_return removed;
}

auto MemeDesk::restore(Removed removed) -> Task<Outcome>
{
    if (!removed.pathInTrash.isEmpty() && !QFile::rename(removed.pathInTrash, removed.path))
        co_return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "“%1” could not be taken out of the trash."))
                .arg(removed.entry.file));
    auto folder = co_await openFolder(removed.folderID);
    if (!folder)
        co_return tl::unexpected(folder.error());
    std::erase_if(
        folder->entries, [&](const auto& entry) { return entry.file == removed.entry.file; });
    folder->entries.push_back(removed.entry);
    co_return co_await finished(writeManifest(*folder));
}

auto MemeDesk::openFolder(QString folderID) -> Task<tl::expected<FolderState, QString>>
{
    co_await m_library.reloadIfChanged();
    const auto& folders = m_library.folderStates();
    const auto found = std::ranges::find(folders, folderID, &FolderState::id);
    if (found == folders.end())
        co_return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "This folder is not there any more.")));
    if (found->isCommunity)
        co_return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "A pack cannot be changed, only switched off.")));
    // Writing it anew would lose what the user wrote by hand.
    if (hasUnreadableManifest(m_library.problems(), folderID))
        co_return tl::unexpected(tr(QT_TRANSLATE_NOOP("MemeDesk",
            "The list of this folder, memes.json, cannot be read. Mend or remove it first.")));
    co_return FolderState(*found);
}

auto MemeDesk::writeManifest(const FolderState& folder) const -> Outcome
{
    if (folder.isCommunity) {
        Log::line(QStringLiteral("buddy: meme library: refusing to write community folder %1")
                      .arg(folder.name));
        return tl::unexpected(
            tr(QT_TRANSLATE_NOOP("MemeDesk", "A pack cannot be changed, only switched off.")));
    }
    const auto path = folder.directory.filePath(QLatin1String(MemeManifest::fileName));
    const auto written = writeDurably(
        path, json::text(MemeManifest { folder.entries }), *m_userDirectory->operations);
    if (!written)
        Log::line(QStringLiteral("buddy: meme library: FAILED to save manifest: %1")
                      .arg(written.error().description()));
    return written.map_error(notSaved);
}

auto MemeDesk::saveFolderSettings(const FolderSettings& settings) const -> Outcome
{
    if (!m_userDirectory)
        return {};
    const auto saved =
        JSONFileStore(*m_userDirectory, QLatin1String(FolderSettings::fileName)).save(settings);
    if (!saved)
        Log::line(QStringLiteral("buddy: meme library: FAILED to save folders.json: %1")
                      .arg(saved.error().description()));
    return saved.map_error(notSaved);
}

auto MemeDesk::freeSlots(const MemeManifestEntry& entry, const QString& folderID) const -> Outcome
{
    const auto tags = slotTags(entry);
    for (auto folder : m_library.folderStates()) {
        const auto isOther = folder.id != folderID && !folder.isCommunity;
        if (!isOther || !takeSlots(folder, tags, {}))
            continue;
        if (auto outcome = writeManifest(folder); !outcome)
            return outcome;
    }
    return {};
}

auto MemeDesk::finished(Outcome outcome) -> Task<Outcome>
{
    co_await m_library.reload();
    co_return outcome;
}

} // namespace pobblewig
