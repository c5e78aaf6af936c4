#pragma once

#include "activity/ActivitySession.h"

/// A stretch of the activity history in words.
namespace pobblewig::ActivitySummaryLogic {

/// The six applications with the most time in the sessions that started from `from` to `to`, such
/// as "Firefox 82 min; Writer 9 min". Empty if none did.
QString activitySummary(const std::vector<ActivitySession>& sessions, TimePoint from, TimePoint to);

} // namespace pobblewig::ActivitySummaryLogic
