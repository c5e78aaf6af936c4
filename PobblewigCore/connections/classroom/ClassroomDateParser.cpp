#include "connections/classroom/ClassroomDateParser.h"

#include "foundation/ISO8601.h"

namespace pobblewig {

namespace {

const QTime endOfDay(23, 59);

} // namespace

std::optional<TimePoint> ClassroomDateParser::dueDate(
    const ClassroomCourseWork& courseWork, const Calendar& calendar)
{
    const auto date = courseWork.dueDate.value_or(ClassroomDate());
    if (!date.year || !date.month || !date.day)
        return std::nullopt;
    const QDate day(*date.year, *date.month, *date.day);
    const auto given = courseWork.dueTime.value_or(ClassroomTime());
    const QTime time(given.hours.value_or(0), given.minutes.value_or(0));
    if (!day.isValid() || !time.isValid())
        return std::nullopt;
    const auto due = courseWork.dueTime ? QDateTime(day, time, Qt::UTC)
                                        : QDateTime(day, endOfDay, calendar.timeZone);
    return TimePoint(std::chrono::milliseconds(due.toMSecsSinceEpoch()));
}

std::optional<TimePoint> ClassroomDateParser::parse(const std::optional<QString>& text)
{
    return text ? ISO8601::instant(*text) : std::nullopt;
}

QString ClassroomDateParser::string(TimePoint time)
{
    return ISO8601::format(time);
}

} // namespace pobblewig
