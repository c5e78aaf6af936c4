#include "foundation/Calendar.h"

namespace pobblewig {

Calendar Calendar::current()
{
    return { QTimeZone::systemTimeZone(), QLocale() };
}

QDateTime Calendar::dateTime(TimePoint time) const
{
    return QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), timeZone);
}

} // namespace pobblewig
