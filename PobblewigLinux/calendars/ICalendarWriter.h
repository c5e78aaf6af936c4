#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "foundation/Calendar.h"

#include <QByteArray>

/// Writes texts of the iCalendar format, each a whole calendar with one entry.
namespace pobblewig::ICalendarWriter {

/// Whole days are those of the user's calendar. An event without an end lasts a day, or no time.
QByteArray event(const CalendarEventDTO& event, const Calendar& calendar, TimePoint now);

/// With an alarm at the time when it is due.
QByteArray reminder(const ReminderDTO& reminder, const Calendar& calendar, TimePoint now);

} // namespace pobblewig::ICalendarWriter
