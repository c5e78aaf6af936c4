#pragma once

#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

/// Reads the user's assignments from the reference memory.
namespace pobblewig::CanvasSyncLogic {

inline constexpr QStringView deadlinesPath = u"academics.deadlines";

/// Returns nothing if the date is missing or unreadable.
std::optional<TimePoint> dueDate(const ReferenceItem& item);

/// The assignments due after `now` within the window, soonest first.
std::vector<ReferenceItem> upcomingDeadlines(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit);

} // namespace pobblewig::CanvasSyncLogic
