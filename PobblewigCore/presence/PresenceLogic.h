#pragma once

#include "foundation/Calendar.h"
#include "presence/PauseLength.h"
#include "presence/PresenceState.h"

/// Puts the buddy's state into words and marks, and decides when a pause ends.
namespace pobblewig::PresenceLogic {

/// A reminder comes first, then work that the user waits for.
PresenceBadge badge(const PresenceState& state);

/// Returns "15:30", "tomorrow" or "Friday, 15:30".
QString timeInWords(TimePoint time, TimePoint now, const Calendar& calendar);

/// Returns "Focus until 15:30".
QString modeInWords(const PresenceState& state, TimePoint now, const Calendar& calendar);

/// Returns the whole state in one line.
QString inWords(const PresenceState& state, TimePoint now, const Calendar& calendar);

TimePoint startOfTomorrow(TimePoint now, const Calendar& calendar);

/// Returns nothing without a pause, or if it lasts until the user ends it.
std::optional<TimePoint> endOfPause(const AppSettings& settings, bool isPaused);

/// Returns nothing if the pause lasts until the user ends it.
std::optional<TimePoint> pauseEnd(PauseLength length, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::PresenceLogic
