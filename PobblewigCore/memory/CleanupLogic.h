#pragma once

#include "memory/CleanupSnapshot.h"
#include "memory/LibrarianAnswers.h"

#include <optional>

/// When the notes are rewritten, and what a rewriting may not take away.
namespace pobblewig::CleanupLogic {

/// At the hard cap always; above the soft target once enough has come since the last cleanup.
bool isDue(int tokens, std::optional<int> tokensAfterLastCleanup);

/// Whether something of what the model saw has been deleted or worded anew since: its answer may
/// then hold, in other words, what is no longer to be known.
bool isOvertaken(const CleanupSnapshot& seen, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns);

/// The notes that the model did not see stand before the rewritten ones, such patterns after them.
CleanupResult withUnseen(CleanupResult rewritten, const CleanupSnapshot& seen,
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns);

/// The rewritten notes, then those of the user that they leave out, as they stand, then the others
/// that they leave out, archived.
std::vector<MemoryNote> guarded(
    std::vector<MemoryNote> rewritten, std::vector<MemoryNote> existing);

} // namespace pobblewig::CleanupLogic
