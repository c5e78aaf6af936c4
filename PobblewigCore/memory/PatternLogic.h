#pragma once

#include "foundation/Calendar.h"
#include "memory/MemoryNote.h"

/// Decides when notes amount to a pattern, and builds it.
namespace pobblewig::PatternLogic {

/// True for at least two notes whose creation and last observation cover at least two days.
bool canPromotePattern(const std::vector<MemoryNote>& evidence, const Calendar& calendar);

/// The notes that a pattern is based on, in the order of `notes`.
std::vector<MemoryNote> evidence(
    const std::vector<MemoryNote>& notes, const std::vector<QUuid>& noteIDs);

/// `evidence` contains those of the proposal's notes that exist.
PatternNote promoted(const NewPattern& proposal, const std::vector<MemoryNote>& evidence);

/// Adds evidence that the pattern does not have yet; its text and confidence stay.
void merge(PatternNote& pattern, const NewPattern& proposal,
    const std::vector<MemoryNote>& evidence, TimePoint now);

} // namespace pobblewig::PatternLogic
