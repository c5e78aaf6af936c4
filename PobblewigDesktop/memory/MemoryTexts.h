#pragma once

#include "PobblewigDesktop/memory/EntryModel.h"
#include "foundation/Calendar.h"
#include "memory/DailySession.h"
#include "memory/DatedObservation.h"
#include "memory/MemoryNote.h"

/// What is remembered, in the user's words.
namespace pobblewig::MemoryTexts {

QString day(TimePoint time, const Calendar& calendar);
QString status(MemoryStatus status);

EntryRow row(const MemoryNote& note, const Calendar& calendar);

/// Where a note comes from, when it was said first and last and how often, and how sure it is.
/// `origin` is the session in which it was noted, as far as that is known.
QString facts(
    const MemoryNote& note, const std::optional<DailySession>& origin, const Calendar& calendar);

EntryRow row(const PatternNote& pattern, const Calendar& calendar);
QString facts(const PatternNote& pattern, const Calendar& calendar);

/// The pattern with the notes that show it; `notes` are all there are.
QString text(const PatternNote& pattern, const std::vector<MemoryNote>& notes);

EntryRow row(const DatedObservation& observation, const Calendar& calendar);
QString text(const DatedObservation& observation);
QString facts(const DatedObservation& observation, const Calendar& calendar);

} // namespace pobblewig::MemoryTexts
