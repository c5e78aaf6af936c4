#pragma once

#include "memory/CleanupSnapshot.h"

#include <optional>

/// Decides when the notes need a clean-up, and limits what a clean-up may remove.
namespace pobblewig::CleanupGuard {

/// Always true at the hard cap; above the soft target, true once enough was added since the last
/// clean-up.
bool isDue(int tokens, std::optional<int> tokensAfterLastCleanup);

/// The notes after a clean-up of those in `seen`. A rewritten note takes the place of the one with
/// its id, and new ones come first. What was seen but not rewritten is archived, or unchanged if it
/// is the user's own. Other notes stay as they are; an archived one becomes active again if the
/// clean-up states it.
std::vector<MemoryNote> cleaned(std::vector<MemoryNote> existing,
    const std::vector<MemoryNote>& seen, const std::vector<MemoryNote>& rewritten);

/// The same for patterns, except that one that was seen but not rewritten is removed, and new ones
/// come last.
std::vector<PatternNote> cleaned(std::vector<PatternNote> existing,
    const std::vector<PatternNote>& seen, const std::vector<PatternNote>& rewritten);

} // namespace pobblewig::CleanupGuard
