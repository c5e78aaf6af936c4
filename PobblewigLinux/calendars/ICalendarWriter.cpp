#include "PobblewigLinux/calendars/ICalendarWriter.h"

#include <libical/ical.h>

#include <memory>

namespace pobblewig {

namespace {

icaltimetype instant(TimePoint time)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    return icaltime_from_timet_with_zone(seconds, 0, icaltimezone_get_utc_timezone());
}

icaltimetype wholeDay(QDate day)
{
    auto time = icaltime_null_time();
    time.year = day.year();
    time.month = day.month();
    time.day = day.day();
    time.is_date = 1;
    return time;
}

icaltimetype moment(TimePoint time, bool isDay, const Calendar& calendar)
{
    return isDay ? wholeDay(calendar.day(time)) : instant(time);
}

void add(icalcomponent* entry, icalproperty* property)
{
    icalcomponent_add_property(entry, property);
}

icalcomponent* entry(icalcomponent_kind kind, const QString& id, const QString& title,
    const std::optional<QString>& notes, TimePoint now)
{
    auto* const entry = icalcomponent_new(kind);
    add(entry, icalproperty_new_uid(id.toUtf8().constData()));
    add(entry, icalproperty_new_dtstamp(instant(now)));
    add(entry, icalproperty_new_created(instant(now)));
    add(entry, icalproperty_new_summary(title.toUtf8().constData()));
    if (notes)
        add(entry, icalproperty_new_description(notes->toUtf8().constData()));
    return entry;
}

icalcomponent* alarm(const QString& title)
{
    auto* const alarm = icalcomponent_new_valarm();
    add(alarm, icalproperty_new_action(ICAL_ACTION_DISPLAY));
    add(alarm, icalproperty_new_description(title.toUtf8().constData()));
    auto* const trigger = icalproperty_new_trigger(icaltriggertype_from_int(0));
    icalproperty_add_parameter(trigger, icalparameter_new_related(ICAL_RELATED_END));
    add(alarm, trigger);
    return alarm;
}

QByteArray calendarWith(icalcomponent* entry)
{
    const std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> calendar(
        icalcomponent_new_vcalendar(), icalcomponent_free);
    add(calendar.get(), icalproperty_new_version("2.0"));
    add(calendar.get(), icalproperty_new_prodid("-//Pobblewig//Pobblewig//EN"));
    icalcomponent_add_component(calendar.get(), entry);
    const std::unique_ptr<char, decltype(&icalmemory_free_buffer)> text(
        icalcomponent_as_ical_string_r(calendar.get()), icalmemory_free_buffer);
    return QByteArray(text.get());
}

} // namespace

QByteArray ICalendarWriter::event(
    const CalendarEventDTO& event, const Calendar& calendar, TimePoint now)
{
    auto* const made = entry(ICAL_VEVENT_COMPONENT, event.id, event.title, event.notes, now);
    add(made, icalproperty_new_dtstart(moment(event.startDate, event.isAllDay, calendar)));
    const auto end = std::max(event.endDate.value_or(event.startDate), event.startDate);
    // The day after the last one.
    if (event.isAllDay)
        add(made, icalproperty_new_dtend(wholeDay(calendar.day(end).addDays(1))));
    else if (end > event.startDate)
        add(made, icalproperty_new_dtend(instant(end)));
    return calendarWith(made);
}

QByteArray ICalendarWriter::reminder(
    const ReminderDTO& reminder, const Calendar& calendar, TimePoint now)
{
    auto* const made =
        entry(ICAL_VTODO_COMPONENT, reminder.id, reminder.title, reminder.notes, now);
    add(made, icalproperty_new_status(ICAL_STATUS_NEEDSACTION));
    if (reminder.dueDate)
        add(made, icalproperty_new_due(moment(*reminder.dueDate, reminder.isAllDay, calendar)));
    if (reminder.dueDate && !reminder.isAllDay)
        icalcomponent_add_component(made, alarm(reminder.title));
    return calendarWith(made);
}

} // namespace pobblewig
