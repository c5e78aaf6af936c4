#pragma once

#include "foundation/Calendar.h"
#include "memory/MemoryNote.h"
#include "memory/librarian/AnswerFields.h"

/// What a model made of the notes that it was to rewrite.
namespace pobblewig::CleanupAnswer {

/// A note that says what an existing one says inherits its wording and its history, and stays the
/// user's word if it was; of several that say the same the first one counts. A new text is cut if
/// it is too long.
std::vector<MemoryNote> notes(
    const AnswerFields& answer, const std::vector<MemoryNote>& existing, TimePoint now);

/// The patterns that there were if the answer has none. A new one needs evidence among `notes` that
/// spans two days; an existing one gains by such evidence and stays without it.
std::vector<PatternNote> patterns(const AnswerFields& answer, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& existing, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::CleanupAnswer
