#pragma once

#include "memory/MemoryNote.h"

#include <optional>
#include <vector>

/// When the notes are due for a clean-up, and what one may not take away.
namespace pobblewig::CleanupGuard {

/// At the hard cap always; above the soft target once enough has come since the last cleanup.
bool isDue(int tokens, std::optional<int> tokensAfterLastCleanup);

/// The rewritten notes, then those of the user that they leave out, as they stand, then the others
/// that they leave out, archived.
std::vector<MemoryNote> guarded(
    std::vector<MemoryNote> rewritten, std::vector<MemoryNote> existing);

} // namespace pobblewig::CleanupGuard
