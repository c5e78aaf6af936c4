#pragma once

#include "foundation/Calendar.h"
#include "memory/DailySession.h"

#include <QString>

/// Where one day of the user's ends and the next begins.
namespace pobblewig::SessionBoundary {

/// Such as "2026-03-01".
QString dayKey(TimePoint time, const Calendar& calendar);

/// Whether an active session of an earlier day has been silent for `inactivityHours`. Midnight
/// alone does not end a session, nor does a silence within its day.
bool shouldRollOver(
    const DailySession& session, TimePoint now, double inactivityHours, const Calendar& calendar);

} // namespace pobblewig::SessionBoundary
