#pragma once

#include "memory/MemoryNote.h"

#include <vector>

/// The text of the durable notes in a prompt.
namespace pobblewig::ResidentMemoryLogic {

/// One section for each category that has notes, then one for the patterns. If they exceed
/// `maxTokens`, the sections share the space, so that small ones stay whole, and of each section
/// the newest and the most confirmed entries stay. The user's corrections count as confirmed.
QString text(const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns,
    int maxTokens, TimePoint now);

/// The size of the whole text, whatever a prompt has room for.
int tokens(
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns, TimePoint now);

/// A quarter of the characters, rounded up.
int estimateTokens(const QString& text);

} // namespace pobblewig::ResidentMemoryLogic
