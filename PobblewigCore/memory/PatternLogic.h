#pragma once

#include "foundation/Calendar.h"
#include "memory/MemoryNote.h"

/// When notes amount to a pattern, and what the pattern then is.
namespace pobblewig::PatternLogic {

/// At least two notes, and at least two days among the days on which they were made and last seen.
bool canPromotePattern(const std::vector<MemoryNote>& evidence, const Calendar& calendar);

/// The notes that a pattern rests on, in the order of `notes`.
std::vector<MemoryNote> evidence(
    const std::vector<MemoryNote>& notes, const std::vector<QUuid>& noteIDs);

/// `evidence` is what exists of the proposal's notes.
PatternNote promoted(const NewPattern& proposal, const std::vector<MemoryNote>& evidence);

/// Adds what the pattern does not rest on yet; its text and its confidence stay.
void merge(PatternNote& pattern, const NewPattern& proposal,
    const std::vector<MemoryNote>& evidence, TimePoint now);

} // namespace pobblewig::PatternLogic
