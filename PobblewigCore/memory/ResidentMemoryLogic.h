#pragma once

#include "memory/MemoryNote.h"

#include <vector>

/// The text of the durable notes in a prompt.
namespace pobblewig::ResidentMemoryLogic {

/// One section for each category that has notes, then one for the patterns. A section that would
/// exceed `maxTokens` is left out entirely; a later, smaller one may still fit.
QString text(const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns,
    int maxTokens, TimePoint now);

/// A quarter of the characters, rounded up.
int estimateTokens(const QString& text);

} // namespace pobblewig::ResidentMemoryLogic
