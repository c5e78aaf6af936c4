#pragma once

#include "memory/MemoryNote.h"

#include <vector>

/// The durable notes as they stand in a prompt.
namespace pobblewig::ResidentMemoryLogic {

/// A section for each category that has something to say, then one for the patterns. A section
/// that would take the text over `maxTokens` is left out whole; a later, smaller one may still fit.
QString text(const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns,
    int maxTokens, TimePoint now);

/// A quarter of the characters, rounded up.
int estimateTokens(const QString& text);

} // namespace pobblewig::ResidentMemoryLogic
