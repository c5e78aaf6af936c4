#include "memory/SessionBoundary.h"

namespace pobblewig {

QString SessionBoundary::dayKey(TimePoint time, const Calendar& calendar)
{
    return calendar.day(time).toString(Qt::ISODate);
}

} // namespace pobblewig
