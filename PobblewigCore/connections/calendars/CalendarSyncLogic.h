#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "foundation/Calendar.h"
#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

/// Turns the user's calendar into items of the reference memory, and reads it from there.
namespace pobblewig::CalendarSyncLogic {

inline constexpr QStringView eventsPath = u"calendar.events";
inline constexpr QStringView remindersPath = u"calendar.reminders";
inline constexpr int upcomingWindowDays = 14;

/// A new item. What the calendar's programs wrote is on one line and cut.
ReferenceItem eventItem(const CalendarEventDTO& event, TimePoint now, const Calendar& calendar);
ReferenceItem reminderItem(const ReminderDTO& reminder, TimePoint now, const Calendar& calendar);

/// "2026-11-24 09:00", or "2026-11-24" for a whole day.
QString stamp(TimePoint date, bool allDay, const Calendar& calendar);

/// The fetched items. Each that is known keeps its id and creation date, and all of it if nothing
/// of it has changed.
std::vector<ReferenceItem> recognised(
    std::vector<ReferenceItem> fetched, const std::vector<ReferenceItem>& known);

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
