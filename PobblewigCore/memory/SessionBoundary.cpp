#include "memory/SessionBoundary.h"

#include <ratio>

namespace pobblewig {

namespace {

using Hours = std::chrono::duration<double, std::ratio<3600>>;

}

QString SessionBoundary::dayKey(TimePoint time, const Calendar& calendar)
{
    return calendar.day(time).toString(Qt::ISODate);
}

bool SessionBoundary::shouldRollOver(
    const DailySession& session, TimePoint now, double inactivityHours, const Calendar& calendar)
{
    return !session.endedAt && dayKey(now, calendar) != session.dayKey
        && std::chrono::abs(now - session.lastActivityAt) >= Hours(inactivityHours);
}

} // namespace pobblewig
