#pragma once

#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

/// What the reference memory says of the user's assignments.
namespace pobblewig::CanvasSyncLogic {

inline constexpr QStringView deadlinesPath = u"academics.deadlines";

/// Nothing for an item that has none, or none that can be read.
std::optional<TimePoint> dueDate(const ReferenceItem& item);

/// Those due after `now` within the window, soonest first.
std::vector<ReferenceItem> upcomingDeadlines(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit);

} // namespace pobblewig::CanvasSyncLogic
