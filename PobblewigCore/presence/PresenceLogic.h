#pragma once

#include "foundation/Calendar.h"
#include "presence/PauseLength.h"
#include "presence/PresenceState.h"

/// How the buddy's state reads, and what the menu's words mean.
namespace pobblewig::PresenceLogic {

/// What asks for the user comes first, then what the user waits for.
PresenceBadge badge(const PresenceState& state);

/// "15:30", "tomorrow", "Friday, 15:30".
QString timeInWords(TimePoint time, TimePoint now, const Calendar& calendar);

/// "Focus until 15:30".
QString modeInWords(const PresenceState& state, TimePoint now, const Calendar& calendar);

/// Everything, in one line.
QString inWords(const PresenceState& state, TimePoint now, const Calendar& calendar);

TimePoint startOfTomorrow(TimePoint now, const Calendar& calendar);

/// Nothing if somebody has to end it.
std::optional<TimePoint> pauseEnd(PauseLength length, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::PresenceLogic
