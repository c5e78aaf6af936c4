#pragma once

#include "foundation/Calendar.h"
#include "memory/DailySession.h"

#include <QString>

/// Decides where one of the user's days ends and the next begins.
namespace pobblewig::SessionBoundary {

/// For example "2026-03-01".
QString dayKey(TimePoint time, const Calendar& calendar);

/// Whether an active session of an earlier day has been silent for `inactivityHours`. Neither
/// midnight alone nor a silence within the day ends a session. Activity that far in the future was
/// recorded by a wrong clock and counts as silence.
bool shouldRollOver(
    const DailySession& session, TimePoint now, double inactivityHours, const Calendar& calendar);

} // namespace pobblewig::SessionBoundary
