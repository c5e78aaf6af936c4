#pragma once

#include "activity/ActivitySession.h"

/// Describes a period of the activity history.
namespace pobblewig::ActivitySummaryLogic {

/// The six applications with the most time in sessions that started between `from` and `to`, such
/// as "Firefox 82 min; Writer 9 min". Empty if there are no such sessions.
QString activitySummary(const std::vector<ActivitySession>& sessions, TimePoint from, TimePoint to);

} // namespace pobblewig::ActivitySummaryLogic
