#include "foundation/Calendar.h"

namespace pobblewig {

Calendar Calendar::current()
{
    // Without a language, times would have seconds.
    const QLocale plain(QLocale::English, QLocale::UnitedKingdom);
    const QLocale users;
    return { QTimeZone::systemTimeZone(), users.language() == QLocale::C ? plain : users };
}

QDateTime Calendar::dateTime(TimePoint time) const
{
    return QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), timeZone);
}

QString Calendar::moment(TimePoint time) const
{
    const auto when = dateTime(time);
    return QStringLiteral("%1, %2").arg(locale.toString(when.date(), QLocale::LongFormat),
        locale.toString(when.time(), QLocale::ShortFormat));
}

} // namespace pobblewig
