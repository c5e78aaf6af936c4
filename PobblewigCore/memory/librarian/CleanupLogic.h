#pragma once

#include "memory/CleanupSnapshot.h"

#include <tl/expected.hpp>

/// Divides the notes into portions for a model to rewrite, and judges what it made of one.
namespace pobblewig::CleanupLogic {

/// What a clean-up may rewrite: the active notes, except those that will expire, and the patterns.
/// Within a day of the last attempt only the notes added since, once they are worth a request.
CleanupSnapshot candidates(
    CleanupSnapshot memory, std::optional<TimePoint> lastTriedAt, TimePoint now);

/// Portions whose complete answer has at most `answerTokens`: notes by category, which share a
/// portion if they fit, and the patterns apart if there are several. A category is divided, and a
/// note left out, only if it is too large alone.
std::vector<CleanupSnapshot> portions(const CleanupSnapshot& memory, int answerTokens);

/// Whether anything that the model saw has since been deleted or reworded. Its answer may then
/// still contain, in other words, what was to be forgotten.
bool isOvertaken(const CleanupSnapshot& seen, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns);

enum class Verdict {
    good,
    /// There was nothing to gain.
    noSmaller,
    /// More than half would be lost, by number or by size.
    tooShort
};

/// Compares what the prompt says of the portion before and after.
Verdict verdict(const CleanupSnapshot& seen, const CleanupSnapshot& rewritten, TimePoint now);

} // namespace pobblewig::CleanupLogic
