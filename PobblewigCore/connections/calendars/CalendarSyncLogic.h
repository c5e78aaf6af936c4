#pragma once

#include "foundation/Calendar.h"
#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

/// Reads the user's calendar from the reference memory.
namespace pobblewig::CalendarSyncLogic {

inline constexpr QStringView eventsPath = u"calendar.events";
inline constexpr QStringView remindersPath = u"calendar.reminders";
inline constexpr int upcomingWindowDays = 14;

/// Returns nothing if the date is missing or unreadable.
std::optional<TimePoint> startDate(const ReferenceItem& item);
std::optional<TimePoint> dueDate(const ReferenceItem& item);

/// The events that start on the day of `now`, in order.
std::vector<ReferenceItem> todaysEvents(
    const std::vector<ReferenceItem>& items, TimePoint now, const Calendar& calendar);

/// The events after `now` within the window, soonest first.
std::vector<ReferenceItem> upcomingEvents(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit);
std::vector<ReferenceItem> dueReminders(
    const std::vector<ReferenceItem>& items, TimePoint now, int windowHours, int limit);

} // namespace pobblewig::CalendarSyncLogic
