#include "memory/CleanupGuard.h"

#include "foundation/Text.h"
#include "memory/MemoryStore.h"

#include <QSet>

#include <algorithm>

namespace pobblewig {

bool CleanupGuard::isDue(int tokens, std::optional<int> tokensAfterLastCleanup)
{
    if (tokens < MemoryStore::softTargetTokens)
        return false;
    return tokens >= MemoryStore::hardCapTokens
        || tokens - tokensAfterLastCleanup.value_or(0) >= MemoryStore::hygieneIntervalTokens;
}

std::vector<MemoryNote> CleanupGuard::guarded(
    std::vector<MemoryNote> rewritten, std::vector<MemoryNote> existing)
{
    QSet<QString> said;
    for (const auto& note : rewritten)
        said.insert(Text::normalized(note.text));
    std::erase_if(
        existing, [&](const auto& note) { return said.contains(Text::normalized(note.text)); });

    const auto isTheUsers = [](const auto& note) {
        return note.source == MemorySource::explicitUser;
    };
    const auto others = std::ranges::stable_partition(existing, isTheUsers);
    for (auto& note : others)
        note.status = MemoryStatus::archived;
    std::ranges::move(existing, std::back_inserter(rewritten));
    return rewritten;
}

} // namespace pobblewig
