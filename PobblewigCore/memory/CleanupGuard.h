#pragma once

#include "memory/MemoryNote.h"

#include <optional>
#include <vector>

/// Decides when the notes need a clean-up, and limits what a clean-up may remove.
namespace pobblewig::CleanupGuard {

/// Always true at the hard cap; above the soft target, true once enough was added since the last
/// clean-up.
bool isDue(int tokens, std::optional<int> tokensAfterLastCleanup);

/// The rewritten notes, then the notes missing from them: the user's own unchanged, the others
/// archived.
std::vector<MemoryNote> guarded(
    std::vector<MemoryNote> rewritten, std::vector<MemoryNote> existing);

} // namespace pobblewig::CleanupGuard
