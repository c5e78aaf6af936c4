#include "memory/CleanupLogic.h"

#include "foundation/Text.h"
#include "memory/MemoryStore.h"

#include <QSet>

#include <algorithm>

namespace pobblewig {

bool CleanupLogic::isDue(int tokens, std::optional<int> tokensAfterLastCleanup)
{
    if (tokens < MemoryStore::softTargetTokens)
        return false;
    return tokens >= MemoryStore::hardCapTokens
        || tokens - tokensAfterLastCleanup.value_or(0) >= MemoryStore::hygieneIntervalTokens;
}

std::vector<MemoryNote> CleanupLogic::guarded(
    std::vector<MemoryNote> rewritten, std::vector<MemoryNote> existing)
{
    QSet<QString> statements;
    for (const auto& note : rewritten)
        statements.insert(Text::normalized(note.text));
    std::erase_if(existing,
        [&](const auto& note) { return statements.contains(Text::normalized(note.text)); });

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
