#pragma once

#include "memory/DailySession.h"
#include "memory/MemoryNote.h"

/// Which notes a list shows, and where they come from.
namespace pobblewig::NoteLogic {

struct Filter {
    /// Each must occur in a note, ignoring case.
    QString words;
    std::optional<MemoryCategory> category = std::nullopt;
    std::optional<MemoryStatus> status = std::nullopt;
};

/// By category, within each in the order given.
std::vector<MemoryNote> listed(std::vector<MemoryNote> notes, const Filter& filter);

/// The session in which the note was made: the latest that had begun by then. Nothing if all of
/// them are younger, or the note does not come from a conversation.
std::optional<DailySession> origin(
    const MemoryNote& note, const std::vector<DailySession>& sessions);

} // namespace pobblewig::NoteLogic
