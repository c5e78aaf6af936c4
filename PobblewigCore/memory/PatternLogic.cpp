#include "memory/PatternLogic.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool contains(const std::vector<QUuid>& ids, const QUuid& id)
{
    return std::ranges::find(ids, id) != ids.end();
}

} // namespace

bool PatternLogic::canPromotePattern(
    const std::vector<MemoryNote>& evidence, const Calendar& calendar)
{
    if (evidence.size() < 2)
        return false;
    const auto firstDay = calendar.day(evidence.front().createdAt);
    return std::ranges::any_of(evidence, [&](const auto& note) {
        return calendar.day(note.createdAt) != firstDay
            || calendar.day(note.lastObservedAt) != firstDay;
    });
}

std::vector<MemoryNote> PatternLogic::evidence(
    const std::vector<MemoryNote>& notes, const std::vector<QUuid>& noteIDs)
{
    std::vector<MemoryNote> evidence;
    std::ranges::copy_if(notes, std::back_inserter(evidence),
        [&](const auto& note) { return contains(noteIDs, note.id); });
    return evidence;
}

PatternNote PatternLogic::promoted(
    const NewPattern& proposal, const std::vector<MemoryNote>& evidence)
{
    PatternNote pattern {
        .id = QUuid::createUuid(),
        .text = proposal.text.trimmed(),
        .firstObservedAt = std::ranges::min(evidence, {}, &MemoryNote::createdAt).createdAt,
        .lastObservedAt =
            std::ranges::max(evidence, {}, &MemoryNote::lastObservedAt).lastObservedAt,
        .sourceNoteIDs = proposal.evidenceNoteIDs,
        .confidence = proposal.confidence,
    };
    for (const auto& note : evidence)
        pattern.evidenceCount += note.observationCount;
    return pattern;
}

void PatternLogic::merge(PatternNote& pattern, const NewPattern& proposal,
    const std::vector<MemoryNote>& evidence, TimePoint now)
{
    for (const auto& note : evidence) {
        if (!contains(pattern.sourceNoteIDs, note.id))
            pattern.evidenceCount += note.observationCount;
    }
    for (const auto& id : proposal.evidenceNoteIDs) {
        if (!contains(pattern.sourceNoteIDs, id))
            pattern.sourceNoteIDs.push_back(id);
    }
    pattern.lastObservedAt = now;
}

} // namespace pobblewig
