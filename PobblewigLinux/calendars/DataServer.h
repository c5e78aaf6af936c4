#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "foundation/Calendar.h"

#include <gio/gio.h>

/// The calendars that Evolution Data Server keeps, its own and those of online accounts. Each call
/// blocks until it is done or cancelled, so it belongs on another thread.
namespace pobblewig::DataServer {

template <typename Value>
using Result = CalendarDataProviding::Result<Value>;

struct Cancellables {
    GCancellable* call;
    /// Ends the wait for the servers of remote calendars; what is known of these is read then.
    GCancellable* refresh;
};

/// A calendar that cannot be read is left out, unless none can.
Result<std::vector<CalendarEventDTO>> events(
    TimePoint from, TimePoint to, const QTimeZone& local, const Cancellables& cancellables);
Result<std::vector<ReminderDTO>> reminders(
    const QTimeZone& local, const Cancellables& cancellables);

enum class Kind { events, reminders };

/// Adds the entry of a text of the iCalendar format, unless one with its id is there already.
Result<void> save(
    Kind kind, const QByteArray& text, const QString& calendarName, GCancellable* cancellable);

} // namespace pobblewig::DataServer
