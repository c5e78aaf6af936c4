#pragma once

#include "foundation/Calendar.h"
#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

/// What the reference memory says of the user's calendar.
namespace pobblewig::CalendarSyncLogic {

inline constexpr QStringView eventsPath = u"calendar.events";
inline constexpr QStringView remindersPath = u"calendar.reminders";
inline constexpr int upcomingWindowDays = 14;

/// Nothing for an item that has none, or none that can be read.
std::optional<TimePoint> startDate(const ReferenceItem& item);
std::optional<TimePoint> dueDate(const ReferenceItem& item);

/// Those that start on the day of `now`, in order.
std::vector<ReferenceItem> todaysEvents(
    const std::vector<ReferenceItem>& items, TimePoint now, const Calendar& calendar);

/// Those after `now` within the window, soonest first.
std::vector<ReferenceItem> upcomingEvents(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit);
std::vector<ReferenceItem> dueReminders(
    const std::vector<ReferenceItem>& items, TimePoint now, int windowHours, int limit);

} // namespace pobblewig::CalendarSyncLogic
