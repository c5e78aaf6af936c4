#include "PobblewigLinux/calendars/ICalendarOccurrences.h"

#include "PobblewigLinux/calendars/ICalendarText.h"

#include <memory>

namespace pobblewig {

namespace {

using Window = ICalendarReader::Window;

/// Ends the search in a rule that repeats by the second, or never.
constexpr int mostSteps = 100'000;

QDate day(const icaltimetype& time)
{
    return { time.year, time.month, time.day };
}

icaltimetype midnight(QDate day)
{
    auto time = icaltime_null_time();
    time.year = day.year();
    time.month = day.month();
    time.day = day.day();
    time.is_date = 1;
    return time;
}

icalproperty* first(icalcomponent* component, icalproperty_kind kind)
{
    return icalcomponent_get_first_property(component, kind);
}

std::optional<icaldurationtype> duration(icalcomponent* event)
{
    auto* const property = first(event, ICAL_DURATION_PROPERTY);
    auto* const value = property ? icalproperty_get_value(property) : nullptr;
    if (!value || icalvalue_isa(value) != ICAL_DURATION_VALUE)
        return std::nullopt;
    return icalvalue_get_duration(value);
}

} // namespace

std::optional<ICalendarOccurrences> ICalendarOccurrences::of(
    icalcomponent* event, ICalendarZones& zones)
{
    auto* const property = first(event, ICAL_DTSTART_PROPERTY);
    auto start = ICalendarText::time(property);
    if (!start || !day(*start).isValid())
        return std::nullopt;
    auto zone = zones.of(property, *start);
    start->zone = nullptr;
    ICalendarOccurrences occurrences(event, zones, *start, std::move(zone));
    occurrences.readLength();
    occurrences.readExceptions();
    return occurrences;
}

ICalendarOccurrences::ICalendarOccurrences(
    icalcomponent* event, ICalendarZones& zones, const icaltimetype& start, ICalendarZone zone)
    : m_event(event)
    , m_zones(zones)
    , m_start(start)
    , m_zone(std::move(zone))
{
}

std::optional<TimePoint> ICalendarOccurrences::replaced() const
{
    return instant(first(m_event, ICAL_RECURRENCEID_PROPERTY));
}

auto ICalendarOccurrences::within(const Window& window, const std::set<TimePoint>& replaced) const
    -> std::vector<Occurrence>
{
    std::vector<Occurrence> found;
    auto seen = replaced;
    for (const auto& start : starts(window)) {
        const auto occurrence = overlapping(start, window);
        if (!occurrence || isException(start, occurrence->start))
            continue;
        if (found.size() < most && seen.insert(occurrence->start).second)
            found.push_back(*occurrence);
    }
    return found;
}

void ICalendarOccurrences::readLength()
{
    auto* const property = first(m_event, ICAL_DTEND_PROPERTY);
    const auto end = ICalendarText::time(property);
    const auto lasting = end ? std::nullopt : duration(m_event);
    if (isAllDay()) {
        const auto days = end ? day(m_start).daysTo(day(*end))
            : lasting         ? qint64(lasting->weeks) * 7 + lasting->days
                              : 1;
        m_days = int(std::clamp<qint64>(days, 1, 10'000));
        return;
    }
    m_duration = lasting;
    const auto from = m_zone.instant(m_start);
    const auto to = instant(property);
    if (from && to && *from < *to)
        m_length = std::chrono::floor<std::chrono::seconds>(*to - *from);
}

void ICalendarOccurrences::readExceptions()
{
    for (auto* const property : ICalendarText::properties(m_event, ICAL_EXDATE_PROPERTY)) {
        const auto time = ICalendarText::time(property);
        if (time && time->is_date)
            m_exceptionDays.insert(day(*time));
        else if (const auto exception = instant(property))
            m_exceptions.insert(*exception);
    }
}

std::optional<TimePoint> ICalendarOccurrences::instant(icalproperty* property) const
{
    const auto time = ICalendarText::time(property);
    return time ? m_zones.of(property, *time).instant(*time) : std::nullopt;
}

QDate ICalendarOccurrences::lastDay(const icaltimetype& start) const
{
    return day(start).addDays(m_days - 1);
}

std::optional<TimePoint> ICalendarOccurrences::endOf(
    const icaltimetype& start, TimePoint from) const
{
    if (isAllDay())
        return m_zone.instant(midnight(lastDay(start).addDays(1)));
    return m_duration ? m_zone.instant(icaltime_add(start, *m_duration)) : from + m_length;
}

auto ICalendarOccurrences::overlapping(const icaltimetype& start, const Window& window) const
    -> std::optional<Occurrence>
{
    const auto from = m_zone.instant(start);
    const auto to = from ? endOf(start, *from) : std::nullopt;
    if (!to || *from >= window.to || (*to <= window.from && *from < window.from))
        return std::nullopt;
    if (isAllDay())
        return Occurrence { *from,
            m_days > 1 ? m_zone.instant(midnight(lastDay(start))) : std::nullopt };
    return Occurrence { *from, *to > *from ? to : std::nullopt };
}

auto ICalendarOccurrences::starts(const Window& window) const -> Starts
{
    Starts starts { m_start };
    if (replaced())
        return starts;
    for (auto* const property : ICalendarText::properties(m_event, ICAL_RRULE_PROPERTY)) {
        auto* const value = icalproperty_get_value(property);
        if (value && icalvalue_isa(value) == ICAL_RECUR_VALUE)
            addRepetitions(icalvalue_get_recur(value), window, starts);
    }
    for (auto* const property : ICalendarText::properties(m_event, ICAL_RDATE_PROPERTY)) {
        if (const auto time = instant(property)) {
            starts.push_back(m_zone.wall(*time));
            starts.back().is_date = m_start.is_date;
        }
    }
    return starts;
}

void ICalendarOccurrences::addRepetitions(
    icalrecurrencetype rule, const Window& window, Starts& starts) const
{
    using namespace std::chrono;
    const auto longest = m_duration ? seconds(icaldurationtype_as_int(*m_duration)) : m_length;
    const auto before = days(m_days + 1) + ceil<days>(longest);
    const auto first = day(m_zone.wall(window.from - before));
    const auto last = day(m_zone.wall(window.to + days(1)));
    rule.until = lastStart(rule.until);
    const std::unique_ptr<icalrecur_iterator, decltype(&icalrecur_iterator_free)> iterator(
        icalrecur_iterator_new(rule, m_start), icalrecur_iterator_free);
    for (int step = 0; iterator && step < mostSteps && starts.size() < 2 * most; ++step) {
        const auto start = icalrecur_iterator_next(iterator.get());
        if (icaltime_is_null_time(start) || day(start) > last)
            return;
        if (day(start) >= first)
            starts.push_back(start);
    }
}

/// The end of a rule on the event's own clock, where the rule counts.
icaltimetype ICalendarOccurrences::lastStart(icaltimetype until) const
{
    if (icaltime_is_null_time(until))
        return until;
    if (icaltime_is_utc(until)) {
        const auto instant = ICalendarZone(QTimeZone::utc()).instant(until);
        until = instant ? m_zone.wall(*instant) : until;
    } else if (until.is_date) {
        until.hour = 23;
        until.minute = 59;
        until.second = 59;
    }
    until.zone = nullptr;
    until.is_date = m_start.is_date;
    return until;
}

bool ICalendarOccurrences::isException(const icaltimetype& start, TimePoint instant) const
{
    return m_exceptions.contains(instant) || m_exceptionDays.contains(day(start));
}

} // namespace pobblewig
