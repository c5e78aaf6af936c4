#pragma once

#include "PobblewigLinux/calendars/ICalendarReader.h"
#include "PobblewigLinux/calendars/ICalendarZones.h"

#include <set>

namespace pobblewig {

/// When an event takes place.
class ICalendarOccurrences {
public:
    struct Occurrence {
        TimePoint start;
        /// Of an all-day event: when its last day begins. Nothing if it ends as it starts.
        std::optional<TimePoint> end;
    };

    /// At most this many of one event are found in a window.
    static constexpr size_t most = 1000;

    /// Both arguments must outlive this object. Returns nothing for an event without a readable
    /// start.
    static std::optional<ICalendarOccurrences> of(icalcomponent* event, ICalendarZones& zones);

    bool isAllDay() const { return m_start.is_date; }

    /// The one that this event stands for if it replaces one of a series.
    std::optional<TimePoint> replaced() const;

    /// Those that overlap the window, without those that other events replace.
    std::vector<Occurrence> within(
        const ICalendarReader::Window& window, const std::set<TimePoint>& replaced) const;

private:
    using Starts = std::vector<icaltimetype>;

    ICalendarOccurrences(
        icalcomponent* event, ICalendarZones& zones, const icaltimetype& start, ICalendarZone zone);

    void readLength();
    void readExceptions();
    std::optional<TimePoint> instant(icalproperty* property) const;
    QDate lastDay(const icaltimetype& start) const;
    std::optional<TimePoint> endOf(const icaltimetype& start, TimePoint from) const;
    std::optional<Occurrence> overlapping(
        const icaltimetype& start, const ICalendarReader::Window& window) const;
    Starts starts(const ICalendarReader::Window& window) const;
    void addRepetitions(
        icalrecurrencetype rule, const ICalendarReader::Window& window, Starts& starts) const;
    icaltimetype lastStart(icaltimetype until) const;
    bool isException(const icaltimetype& start, TimePoint instant) const;

    icalcomponent* m_event;
    ICalendarZones& m_zones;
    icaltimetype m_start;
    ICalendarZone m_zone;
    /// Of an all-day event.
    int m_days = 1;
    std::chrono::seconds m_length {};
    /// In place of the length: it counts by the clock on the wall.
    std::optional<icaldurationtype> m_duration;
    std::set<TimePoint> m_exceptions;
    std::set<QDate> m_exceptionDays;
};

} // namespace pobblewig
