#pragma once

#include "foundation/Calendar.h"
#include "memory/MemoryNote.h"
#include "memory/librarian/AnswerFields.h"

/// Reads what a model has made of a portion of the notes.
namespace pobblewig::CleanupAnswer {

/// A note with the same statement as an existing one inherits its wording and history, and stays
/// the user's own if it was. If several have the same statement, the first counts. A new text is
/// cut if it is too long.
std::vector<MemoryNote> notes(
    const AnswerFields& answer, const std::vector<MemoryNote>& existing, TimePoint now);

/// The patterns that the answer lists. A new one needs evidence in `notes` that spans two days; an
/// existing one gains any such evidence.
std::vector<PatternNote> patterns(const AnswerFields& answer, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& existing, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::CleanupAnswer
