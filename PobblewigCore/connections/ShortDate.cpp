#include "connections/ShortDate.h"

namespace pobblewig {

QString shortDateTime(TimePoint time, const Calendar& calendar)
{
    const auto when = calendar.dateTime(time);
    return QStringLiteral("%1, %2").arg(
        calendar.locale.toString(when.date(), QStringLiteral("d MMM yyyy")),
        calendar.locale.toString(when.time(), QLocale::ShortFormat));
}

} // namespace pobblewig
