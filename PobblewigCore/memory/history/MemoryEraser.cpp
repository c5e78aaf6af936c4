#include "memory/history/MemoryEraser.h"

#include "foundation/Log.h"

#include <algorithm>

namespace pobblewig {

namespace {

const auto storeNames = QStringLiteral(
    "memory reference observations summaries sessions chat transcript meetings proposals")
                            .split(u' ');

bool isStoreCopy(const QString& store, const QString& fileName)
{
    return fileName.startsWith(store + QStringLiteral(".json.corrupt-"))
        || fileName.startsWith(QStringLiteral(".sync-backup-%1-").arg(store))
        || (fileName.startsWith(store + u'.') && fileName.contains(u"-backup-"));
}

bool isArchive(const QString& fileName)
{
    return fileName.startsWith(u"chat-") && fileName.endsWith(u".json");
}

/// Removes the suffix of a file that a crash left in the middle of a write.
QString withoutPartialMark(const QString& fileName)
{
    static const auto end = QStringLiteral(".partial");
    if (!fileName.startsWith(u'.') || !fileName.endsWith(end))
        return fileName;
    return fileName.sliced(1).chopped(end.size());
}

bool isStoreFile(const QString& fileName)
{
    return std::ranges::any_of(storeNames,
        [&](const QString& store) { return fileName == store + QStringLiteral(".json"); });
}

void removeFile(const QString& path)
{
    QFile file(path);
    if (!file.remove())
        Log::line(QStringLiteral("buddy: failed to delete %1: %2")
                      .arg(QFileInfo(path).fileName(), file.errorString()));
}

template <typename Chosen>
void removeFiles(const QDir& directory, const Chosen& isChosen)
{
    for (const auto& name : directory.entryList(QDir::Files | QDir::System | QDir::Hidden)) {
        if (isChosen(name))
            removeFile(directory.filePath(name));
    }
}

} // namespace

void MemoryEraser::removeUnreadable(const DataDirectory& directory)
{
    std::erase_if(directory.health->unreadable, [](const auto& entry) {
        const auto& path = entry.first;
        if (!isStoreFile(QFileInfo(path).fileName()))
            return false;
        removeFile(path);
        return !QFileInfo::exists(path);
    });
}

void MemoryEraser::emptyStores(MemoryTiers& memory, ChatHistoryStore& history, TimePoint now)
{
    memory.notes.deleteAll(now);
    memory.reference.deleteAll();
    memory.observations.deleteAll();
    memory.summaries.deleteAll();
    memory.sessions.deleteAll();
    history.clear();
}

bool MemoryEraser::isCopy(const QString& fileName)
{
    const auto whole = withoutPartialMark(fileName);
    if (isArchive(whole) || whole == u"intent.json" || whole.startsWith(u"draft.json"))
        return true;
    return (whole != fileName && isStoreFile(whole))
        || std::ranges::any_of(
            storeNames, [&](const QString& store) { return isStoreCopy(store, whole); });
}

void MemoryEraser::removeCopies(const QDir& directory)
{
    removeFiles(directory, isCopy);
    removeFiles(QDir(directory.filePath(QStringLiteral(".sync-pending"))), isStoreFile);
}

} // namespace pobblewig
