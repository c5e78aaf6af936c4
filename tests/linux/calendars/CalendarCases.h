#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "foundation/Calendar.h"
#include "support/TableRow.h"

#include <QStringList>

namespace pobblewig {

/// What calendars hold, and what of it is found, wherever the calendars are.
namespace CalendarCases {

/// A case is one event, or a series of several. Its id is its name.
struct Case {
    const char* name;
    /// The first day of two weeks.
    QDate from;
    QStringList events;
    /// From where to where, in UTC; whole days in words.
    QStringList found;
};

inline const Calendar berlin { QTimeZone("Europe/Berlin"), QLocale::c() };

inline TimePoint at(QDate day, QTime time = QTime(0, 0))
{
    const QDateTime moment(day, time, berlin.timeZone);
    return TimePoint(std::chrono::milliseconds(moment.toMSecsSinceEpoch()));
}

inline std::vector<Case> all()
{
    const QDate autumn(2026, 10, 19);
    const QDate spring(2026, 3, 23);
    const auto series = u"DTSTART;TZID=Europe/Berlin:20261005T090000|"
                        "DTEND;TZID=Europe/Berlin:20261005T100000|RRULE:FREQ=WEEKLY"_s;
    return {
        { "a series with an exception and a moved one", autumn,
            { series + u";BYDAY=MO,WE|EXDATE;TZID=Europe/Berlin:20261021T090000"_s,
                u"RECURRENCE-ID;TZID=Europe/Berlin:20261028T090000|"
                "DTSTART;TZID=Europe/Berlin:20261029T140000"_s },
            { u"10-19 07:00-08:00"_s, u"10-26 08:00-09:00"_s, u"10-29 13:00"_s } },
        { "one moved out of the window, one cancelled", autumn,
            { series + u";BYDAY=MO,TU"_s,
                u"RECURRENCE-ID;TZID=Europe/Berlin:20261020T090000|"
                "DTSTART;TZID=Europe/Berlin:20261120T090000"_s,
                u"RECURRENCE-ID;TZID=Europe/Berlin:20261026T090000|STATUS:CANCELLED|"
                "DTSTART;TZID=Europe/Berlin:20261026T090000"_s },
            { u"10-19 07:00-08:00"_s, u"10-27 08:00-09:00"_s } },
        { "one moved into the window", autumn,
            { u"DTSTART:20260105T090000Z|RRULE:FREQ=YEARLY"_s,
                u"RECURRENCE-ID:20260105T090000Z|DTSTART:20261020T090000Z"_s },
            { u"10-20 09:00"_s } },
        { "the last one is at the end of the rule", autumn,
            { u"DTSTART;TZID=Europe/Berlin:20261001T233000|"
              "RRULE:FREQ=DAILY;UNTIL=20261020T213000Z"_s },
            { u"10-19 21:30"_s, u"10-20 21:30"_s } },
        { "the rule ends with a day", autumn,
            { u"DTSTART:20261001T090000Z|RRULE:FREQ=DAILY;UNTIL=20261020"_s },
            { u"10-19 09:00"_s, u"10-20 09:00"_s } },
        { "a number of times", autumn, { u"DTSTART:20261017T090000Z|RRULE:FREQ=DAILY;COUNT=3"_s },
            { u"10-19 09:00"_s } },
        { "dates beside the rule", autumn,
            { u"DTSTART:20260101T090000Z|RDATE:20261021T090000Z,20261022T093000Z"_s },
            { u"10-21 09:00"_s, u"10-22 09:30"_s } },
        { "several whole days", autumn,
            { u"DTSTART;VALUE=DATE:20261018|DTEND;VALUE=DATE:20261021"_s },
            { u"10-18 to 10-20"_s } },
        { "a whole day each week", autumn,
            { u"DTSTART;VALUE=DATE:20260105|RRULE:FREQ=WEEKLY|EXDATE;VALUE=DATE:20261019"_s },
            { u"10-26 whole day"_s } },
        { "a time without a zone", autumn,
            { u"DTSTART:20261024T120000|DTEND:20261024T130000|RRULE:FREQ=DAILY;COUNT=2"_s },
            { u"10-24 10:00-11:00"_s, u"10-25 11:00-12:00"_s } },
        { "the night with an hour more", autumn,
            { u"DTSTART;TZID=Europe/Berlin:20261024T013000|DURATION:PT3H|"
              "RRULE:FREQ=DAILY;COUNT=3"_s },
            { u"10-23 23:30-02:30"_s, u"10-24 23:30-03:30"_s, u"10-26 00:30-03:30"_s } },
        { "the night with an hour less", spring,
            { u"DTSTART;TZID=Europe/Berlin:20260328T023000|RRULE:FREQ=DAILY;COUNT=3"_s },
            { u"03-28 01:30"_s, u"03-29 01:30"_s, u"03-30 00:30"_s } },
        { "it has begun before", autumn, { u"DTSTART:20261018T210000Z|DTEND:20261018T230000Z"_s },
            { u"10-18 21:00-23:00"_s } },
        { "it ends as the window begins", autumn,
            { u"DTSTART:20261018T210000Z|DTEND:20261018T220000Z"_s }, {} },
        { "it begins as the window ends", autumn, { u"DTSTART:20261101T230000Z"_s }, {} },
        { "a name of Windows", autumn, { u"DTSTART;TZID=Eastern Standard Time:20261020T120000"_s },
            { u"10-20 16:00"_s } },
        { "a name behind that of a program", autumn,
            { u"DTSTART;TZID=/example.org/Tzfile/America/New_York:20261020T120000"_s },
            { u"10-20 16:00"_s } },
        { "a zone that the calendar describes", autumn,
            { u"DTSTART;TZID=Homemade:20261020T120000"_s }, { u"10-20 06:30"_s } },
        { "a zone that nobody knows", autumn, { u"DTSTART;TZID=Nowhere:20261020T120000"_s },
            { u"10-20 10:00"_s } },
        { "cancelled", autumn, { u"DTSTART:20261020T120000Z|STATUS:CANCELLED"_s }, {} },
    };
}

inline QString reminders()
{
    const QStringList entries { u"DUE;VALUE=DATE:20261020"_s,
        u"DUE;TZID=Europe/Berlin:20261020T120000"_s, u"DESCRIPTION:no date"_s,
        u"STATUS:COMPLETED"_s, u"COMPLETED:20261020T120000Z"_s, u"STATUS:CANCELLED"_s };
    QString text;
    for (int number = 0; number < entries.size(); ++number)
        text += u"BEGIN:VTODO|UID:%1|%2|END:VTODO|"_s.arg(number).arg(entries[number]);
    return text;
}

/// A whole text of the format; "|" divides its lines.
inline QByteArray calendar(const QString& entries)
{
    const auto zone = u"BEGIN:VTIMEZONE|TZID:Homemade|BEGIN:STANDARD|DTSTART:19700101T000000|"
                      "TZOFFSETFROM:+0530|TZOFFSETTO:+0530|END:STANDARD|END:VTIMEZONE|"_s;
    auto text =
        u"BEGIN:VCALENDAR|VERSION:2.0|PRODID:test|"_s + zone + entries + u"END:VCALENDAR|"_s;
    return text.replace(u'|', u"\r\n"_s).toUtf8();
}

inline QString entries(const Case& each)
{
    QString text;
    for (const auto& event : each.events)
        text += u"BEGIN:VEVENT|UID:%1|DTSTAMP:20260101T000000Z|SUMMARY:%1|%2|END:VEVENT|"_s.arg(
            QLatin1String(each.name), event);
    return text;
}

inline QString shown(const CalendarEventDTO& event)
{
    const auto text = [](TimePoint time, const Calendar& calendar, const char* format) {
        return calendar.dateTime(time).toString(QLatin1String(format));
    };
    if (event.isAllDay)
        return text(event.startDate, berlin, "MM-dd")
            + (event.endDate ? u" to "_s + text(*event.endDate, berlin, "MM-dd") : u" whole day"_s);
    return text(event.startDate, {}, "MM-dd HH:mm")
        + (event.endDate ? text(*event.endDate, {}, "-HH:mm") : QString());
}

inline void addRows()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QStringList>("found");
    for (const auto& each : all())
        QTest::newRow(each.name) << each.from << each.found;
}

/// What the calendars have of the row's case.
inline QStringList foundOf(const char* name, const std::vector<CalendarEventDTO>& events)
{
    QStringList found;
    for (const auto& event : events) {
        if (event.id == QLatin1String(name))
            found.append(shown(event));
    }
    found.sort();
    return found;
}

inline QStringList shown(const std::vector<ReminderDTO>& reminders)
{
    QStringList found;
    for (const auto& reminder : reminders) {
        const auto due = reminder.dueDate.value_or(TimePoint());
        found.append(reminder.id + u' ' + berlin.dateTime(due).toString(u"MM-dd HH:mm"_s)
            + (reminder.isAllDay ? u" whole day"_s : QString()));
    }
    found.sort();
    return found;
}

inline const QStringList openReminders { u"0 10-20 00:00 whole day"_s, u"1 10-20 12:00"_s,
    u"2 01-01 01:00"_s };

} // namespace CalendarCases

} // namespace pobblewig
