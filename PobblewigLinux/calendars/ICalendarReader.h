#pragma once

#include "connections/calendars/CalendarDataProviding.h"

#include <QByteArray>
#include <QTimeZone>

/// Reads texts of the iCalendar format. May be called on any thread.
namespace pobblewig::ICalendarReader {

struct Window {
    TimePoint from;
    TimePoint to;
    /// The user's time zone, in which times without a zone and whole days are meant.
    QTimeZone local = QTimeZone::utc();
};

/// The events that overlap the window, one entry for each repetition, without cancelled ones.
/// Returns nothing if the text is none of this format.
std::optional<std::vector<CalendarEventDTO>> events(const QByteArray& text, const Window& window);

/// The reminders that are neither completed nor cancelled.
std::optional<std::vector<ReminderDTO>> reminders(const QByteArray& text, const QTimeZone& local);

} // namespace pobblewig::ICalendarReader
