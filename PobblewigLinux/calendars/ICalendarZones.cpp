#include "PobblewigLinux/calendars/ICalendarZones.h"

#include <QDateTime>

namespace pobblewig {

namespace {

/// Programs put their own name in front, as in "/example.org/Tzfile/Europe/Berlin".
QTimeZone knownZone(const QByteArray& name)
{
    for (qsizetype at = 0; at >= 0; at = name.indexOf('/', at)) {
        at += name.startsWith('/') || at > 0 ? 1 : 0;
        const auto id = name.mid(at);
        if (!id.isEmpty() && QTimeZone::isTimeZoneIdAvailable(id))
            return QTimeZone(id);
    }
    return {};
}

} // namespace

std::optional<TimePoint> ICalendarZone::instant(const icaltimetype& wall) const
{
    const QDate day(wall.year, wall.month, wall.day);
    const QTime time(wall.hour, wall.minute, std::min(wall.second, 59));
    if (!day.isValid() || !time.isValid())
        return std::nullopt;
    if (m_described && !wall.is_date)
        return TimePoint(std::chrono::seconds(icaltime_as_timet_with_zone(wall, m_described)));
    const auto moment = wall.is_date ? day.startOfDay(m_zone) : QDateTime(day, time, m_zone);
    return TimePoint(std::chrono::milliseconds(moment.toMSecsSinceEpoch()));
}

icaltimetype ICalendarZone::wall(TimePoint time) const
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    icaltimetype wall = icaltime_null_time();
    if (m_described) {
        wall = icaltime_from_timet_with_zone(seconds, 0, m_described);
        wall.zone = nullptr;
        return wall;
    }
    const auto moment = QDateTime::fromSecsSinceEpoch(seconds, m_zone);
    const auto day = moment.date();
    const auto clock = moment.time();
    wall.year = day.year();
    wall.month = day.month();
    wall.day = day.day();
    wall.hour = clock.hour();
    wall.minute = clock.minute();
    wall.second = clock.second();
    return wall;
}

ICalendarZones::ICalendarZones(icalcomponent* calendar, const QTimeZone& local)
    : m_calendar(calendar)
    , m_local(local)
{
}

const ICalendarZone& ICalendarZones::of(icalproperty* property, const icaltimetype& time)
{
    if (icaltime_is_utc(time))
        return m_utc;
    auto* const parameter = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    if (!parameter || time.is_date)
        return m_local;
    const QByteArray name(icalparameter_get_tzid(parameter));
    auto known = m_known.find(name);
    if (known == m_known.end())
        known = m_known.insert(name, named(name));
    return *known;
}

ICalendarZone ICalendarZones::named(const QByteArray& name) const
{
    if (const auto zone = knownZone(name); zone.isValid())
        return ICalendarZone(zone);
    if (auto* const described = icalcomponent_get_timezone(m_calendar, name.constData()))
        return ICalendarZone(described);
    const auto known = QTimeZone::windowsIdToDefaultIanaId(name);
    return known.isEmpty() ? m_local : ICalendarZone(QTimeZone(known));
}

} // namespace pobblewig
