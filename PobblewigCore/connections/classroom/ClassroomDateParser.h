#pragma once

#include "connections/classroom/ClassroomRecords.h"
#include "foundation/Calendar.h"

/// Dates as Google Classroom writes them.
namespace pobblewig::ClassroomDateParser {

/// The date and time in UTC; without a time the last minute of the date where the user is. Returns
/// nothing without a whole date.
std::optional<TimePoint> dueDate(const ClassroomCourseWork& courseWork, const Calendar& calendar);

std::optional<TimePoint> parse(const std::optional<QString>& text);
QString string(TimePoint time);

} // namespace pobblewig::ClassroomDateParser
