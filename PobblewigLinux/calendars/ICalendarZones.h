#pragma once

#include "foundation/Time.h"

#include <QHash>
#include <QTimeZone>

#include <libical/ical.h>

#include <optional>

namespace pobblewig {

/// A time zone that a calendar names, or the user's own.
class ICalendarZone {
public:
    explicit ICalendarZone(QTimeZone zone)
        : m_zone(std::move(zone))
    {
    }
    /// Described by the calendar, which must outlive the zone.
    explicit ICalendarZone(icaltimezone* described)
        : m_described(described)
    {
    }

    /// The instant of a wall clock time; of a day, its beginning. Returns nothing for what no
    /// clock shows.
    std::optional<TimePoint> instant(const icaltimetype& wall) const;

    /// What clocks show at the instant.
    icaltimetype wall(TimePoint time) const;

private:
    QTimeZone m_zone;
    icaltimezone* m_described = nullptr;
};

/// The time zones of one calendar. A name that this computer knows means its zone; any other one
/// means the zone that the calendar describes. A time without a zone, or with one that nobody
/// knows, is the user's.
class ICalendarZones {
public:
    /// The calendar must outlive this object.
    ICalendarZones(icalcomponent* calendar, const QTimeZone& local);

    const ICalendarZone& local() const { return m_local; }

    /// The zone of a property's time.
    const ICalendarZone& of(icalproperty* property, const icaltimetype& time);

private:
    ICalendarZone named(const QByteArray& name) const;

    icalcomponent* m_calendar;
    ICalendarZone m_local;
    ICalendarZone m_utc { QTimeZone::utc() };
    QHash<QByteArray, ICalendarZone> m_known;
};

} // namespace pobblewig
