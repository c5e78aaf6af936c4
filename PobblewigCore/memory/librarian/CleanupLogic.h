#pragma once

#include "memory/CleanupSnapshot.h"
#include "memory/librarian/LibrarianAnswers.h"

/// What becomes of a rewriting of the notes when they have changed since the model read them.
namespace pobblewig::CleanupLogic {

/// Whether something of what the model saw has been deleted or worded anew since: its answer may
/// then hold, in other words, what is no longer to be known.
bool isOvertaken(const CleanupSnapshot& seen, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns);

/// The notes that the model did not see stand before the rewritten ones, such patterns after them.
CleanupResult withUnseen(CleanupResult rewritten, const CleanupSnapshot& seen,
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns);

} // namespace pobblewig::CleanupLogic
