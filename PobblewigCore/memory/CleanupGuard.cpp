#include "memory/CleanupGuard.h"

#include "memory/MemoryStore.h"

#include <QSet>

#include <algorithm>

namespace pobblewig {

namespace {

template <typename Entry>
QSet<QUuid> idsOf(const std::vector<Entry>& entries)
{
    QSet<QUuid> ids;
    for (const auto& entry : entries)
        ids.insert(entry.id);
    return ids;
}

template <typename Entry>
const Entry* withID(const std::vector<Entry>& entries, const QUuid& id)
{
    const auto found = std::ranges::find(entries, id, &Entry::id);
    return found == entries.end() ? nullptr : &*found;
}

template <typename Entry>
std::vector<Entry> added(const std::vector<Entry>& rewritten, const std::vector<Entry>& existing)
{
    auto entries = rewritten;
    const auto known = idsOf(existing);
    std::erase_if(entries, [&](const auto& entry) { return known.contains(entry.id); });
    return entries;
}

} // namespace

bool CleanupGuard::isDue(int tokens, std::optional<int> tokensAfterLastCleanup)
{
    if (tokens < MemoryStore::softTargetTokens)
        return false;
    return tokens >= MemoryStore::hardCapTokens
        || tokens - tokensAfterLastCleanup.value_or(0) >= MemoryStore::hygieneIntervalTokens;
}

std::vector<MemoryNote> CleanupGuard::cleaned(std::vector<MemoryNote> existing,
    const std::vector<MemoryNote>& seen, const std::vector<MemoryNote>& rewritten)
{
    auto notes = added(rewritten, existing);
    const auto wasSeen = idsOf(seen);
    for (auto& note : existing) {
        const auto isOpen = wasSeen.contains(note.id) || note.status != MemoryStatus::active;
        const auto* rewriting = isOpen ? withID(rewritten, note.id) : nullptr;
        if (rewriting)
            note = *rewriting;
        else if (wasSeen.contains(note.id) && note.source != MemorySource::explicitUser)
            note.status = MemoryStatus::archived;
    }
    std::ranges::move(existing, std::back_inserter(notes));
    return notes;
}

std::vector<PatternNote> CleanupGuard::cleaned(std::vector<PatternNote> existing,
    const std::vector<PatternNote>& seen, const std::vector<PatternNote>& rewritten)
{
    const auto news = added(rewritten, existing);
    const auto wasSeen = idsOf(seen);
    for (auto& pattern : existing) {
        if (const auto* rewriting = withID(rewritten, pattern.id))
            pattern = *rewriting;
    }
    std::erase_if(existing, [&](const auto& pattern) {
        return wasSeen.contains(pattern.id) && !withID(rewritten, pattern.id);
    });
    std::ranges::copy(news, std::back_inserter(existing));
    return existing;
}

} // namespace pobblewig
