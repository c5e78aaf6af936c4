#pragma once

#include "memory/CleanupSnapshot.h"
#include "memory/librarian/LibrarianAnswers.h"

/// Applies rewritten notes when the notes have changed since the model read them.
namespace pobblewig::CleanupLogic {

/// Whether anything that the model saw has since been deleted or reworded. Its answer may then
/// still contain, in other words, what was to be forgotten.
bool isOvertaken(const CleanupSnapshot& seen, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns);

/// Adds the notes that the model did not see before the rewritten ones, and such patterns after
/// them.
CleanupResult withUnseen(CleanupResult rewritten, const CleanupSnapshot& seen,
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns);

} // namespace pobblewig::CleanupLogic
