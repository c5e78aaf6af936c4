#include "PobblewigLinux/calendars/DataServerCalendars.h"

#include "CalendarCases.h"
#include "support/Awaited.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QStandardPaths>

namespace pobblewig {

using namespace CalendarCases;

/// Needs a session with a calendar service; see support/with-calendars.
class DataServerCalendarsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QString events;
        for (const auto& each : all())
            events += entries(each);
        writeLocal("calendar", events);
        writeLocal("tasks", reminders());
        QCOMPARE(send("PUT", u"Uni/lecture.ics"_s, calendar(lecture)).first, 201);
    }

    void whatIsOnIsFound_data() { addRows(); }
    void whatIsOnIsFound()
    {
        QFETCH(QDate, from);
        const auto events = awaited(m_calendars.fetchEvents(at(from), at(from.addDays(14))));
        QCOMPARE(problem(events), QString());
        QTEST(foundOf(QTest::currentDataTag(), *events), "found");
    }

    void whatIsToBeDoneIsFound()
    {
        const auto found = awaited(m_calendars.fetchIncompleteReminders());
        QCOMPARE(problem(found), QString());
        QCOMPARE(CalendarCases::shown(*found), openReminders);
    }

    void whatAServerHasIsFound() { QCOMPARE(titlesOn(u"Uni"_s), QStringList(u"Lecture"_s)); }

    void whatIsSavedReachesAServerOnce()
    {
        const CalendarEventDTO event { .id = u"dentist"_s,
            .title = u"Dentist, ü; 2"_s,
            .startDate = at(day, QTime(14, 0)),
            .endDate = at(day, QTime(15, 0)),
            .calendarName = u"Uni"_s };
        for (int attempt = 0; attempt < 2; ++attempt) {
            QCOMPARE(problem(awaited(m_calendars.saveEvent(event))), QString());
        }
        const auto held = reported(u"Uni"_s);
        QCOMPARE(held.count("SUMMARY:Dentist\\, ü\\; 2"), 1);
        QVERIFY2(held.contains("DTSTART:20261020T120000Z"), held.constData());
        QCOMPARE(titlesOn(u"Uni"_s), (QStringList { u"Dentist, ü; 2"_s, u"Lecture"_s }));
        const ReminderDTO reminder {
            .title = u"Email"_s, .dueDate = at(day), .listName = u"Tasks"_s, .isAllDay = true
        };
        QVERIFY(awaited(m_calendars.saveReminder(reminder)));
        QVERIFY(reported(u"Tasks"_s).contains("DUE;VALUE=DATE:20261020"));
    }

    void withoutANameTheDefaultCalendarIsMeant()
    {
        const CalendarEventDTO event { .title = u"Holiday"_s,
            .startDate = at(day),
            .endDate = at(day.addDays(1)),
            .isAllDay = true };
        QVERIFY(awaited(m_calendars.saveEvent(event)));
        QVERIFY(titlesOn(u"Personal"_s).contains(u"Holiday"_s));
        const auto events = awaited(m_calendars.fetchEvents(at(day), at(day.addDays(1))));
        const auto saved = std::ranges::find(*events, u"Holiday"_s, &CalendarEventDTO::title);
        QCOMPARE(CalendarCases::shown(*saved), u"10-20 to 10-21"_s);
    }

private:
    template <typename Value>
    static QString problem(const CalendarDataProviding::Result<Value>& result)
    {
        return result ? QString() : result.error().description;
    }

    static void writeLocal(const char* kind, const QString& entries)
    {
        const QDir data(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
        const auto folder = u"evolution/%1/system"_s.arg(QLatin1String(kind));
        QVERIFY(data.mkpath(folder));
        QFile file(data.filePath(u"%1/%2.ics"_s.arg(folder, QLatin1String(kind))));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(calendar(entries)) > 0);
    }

    /// The status and the body of the server's answer.
    std::pair<int, QByteArray> send(const char* verb, const QString& place, const QByteArray& body)
    {
        QNetworkRequest request(QUrl(qEnvironmentVariable("CALDAV") + place));
        request.setHeader(QNetworkRequest::ContentTypeHeader,
            qstrcmp(verb, "PUT") == 0 ? u"text/calendar"_s : u"application/xml"_s);
        request.setRawHeader("Depth", "1");
        const std::unique_ptr<QNetworkReply> reply(m_http.sendCustomRequest(request, verb, body));
        QSignalSpy end(reply.get(), &QNetworkReply::finished);
        if (!reply->isFinished() && !end.wait(10'000))
            return {};
        return { reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
            reply->readAll() };
    }

    /// What the server tells another client that a calendar holds.
    QByteArray reported(const QString& name)
    {
        return send("REPORT", name + u'/',
            R"(<C:calendar-query xmlns:D="DAV:" xmlns:C="urn:ietf:params:xml:ns:caldav"><D:prop>)"
            R"(<C:calendar-data/></D:prop><C:filter><C:comp-filter name="VCALENDAR"/></C:filter>)"
            R"(</C:calendar-query>)")
            .second;
    }

    QStringList titlesOn(const QString& calendarName)
    {
        const auto events = awaited(m_calendars.fetchEvents(at(day), at(day.addDays(1))));
        QStringList titles;
        for (const auto& event : events.value_or(std::vector<CalendarEventDTO>())) {
            if (event.calendarName == calendarName)
                titles.append(event.title);
        }
        titles.sort();
        return titles;
    }

    const QDate day { 2026, 10, 20 };
    const QString lecture = u"BEGIN:VEVENT|UID:lecture|DTSTAMP:20260101T000000Z|SUMMARY:Lecture|"
                            "DTSTART:20261020T080000Z|DTEND:20261020T090000Z|END:VEVENT|"_s;
    DataServerCalendars m_calendars { { [] {
                                           return at({ 2026, 10, 19 });
                                       },
        [] { return berlin; } } };
    QNetworkAccessManager m_http;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DataServerCalendarsTest)
#include "DataServerCalendarsTest.moc"
