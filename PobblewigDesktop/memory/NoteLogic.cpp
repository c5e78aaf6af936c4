#include "PobblewigDesktop/memory/NoteLogic.h"

#include "PobblewigDesktop/memory/SearchWords.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool comesFromAConversation(MemorySource source)
{
    return source != MemorySource::meetingNotes && source != MemorySource::systemObserved;
}

} // namespace

std::vector<MemoryNote> NoteLogic::listed(std::vector<MemoryNote> notes, const Filter& filter)
{
    const SearchWords words(filter.words);
    std::erase_if(notes, [&](const auto& note) {
        return (filter.category && note.category != *filter.category)
            || (filter.status && note.status != *filter.status) || !words.match(note.text);
    });
    std::ranges::stable_sort(notes, {}, &MemoryNote::category);
    return notes;
}

std::optional<DailySession> NoteLogic::origin(
    const MemoryNote& note, const std::vector<DailySession>& sessions)
{
    std::optional<DailySession> origin;
    if (!comesFromAConversation(note.source))
        return origin;
    for (const auto& session : sessions) {
        if (session.startedAt <= note.createdAt
            && (!origin || origin->startedAt < session.startedAt))
            origin = session;
    }
    return origin;
}

} // namespace pobblewig
