#include "PobblewigLinux/calendars/CalendarFolder.h"

#include "CalendarCases.h"
#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"

#include <QElapsedTimer>

namespace pobblewig {

using namespace CalendarCases;

class CalendarFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch.emplace(); }

    void whatIsOnIsFound_data() { addRows(); }
    void whatIsOnIsFound()
    {
        for (const auto& each : all())
            m_scratch->write(QLatin1String(each.name) + u".ics"_s, calendar(entries(each)));
        QFETCH(QDate, from);
        const auto events = awaited(folder().fetchEvents(at(from), at(from.addDays(14))));
        QVERIFY(events);
        QTEST(foundOf(QTest::currentDataTag(), *events), "found");
    }

    void whatIsToBeDoneIsFound()
    {
        m_scratch->write(u"tasks.ics"_s, calendar(reminders()));
        QCOMPARE(
            CalendarCases::shown(*awaited(folder().fetchIncompleteReminders())), openReminders);
    }

    void aBrokenFileHidesNoOther_data()
    {
        columns<QByteArray>("text");
        const auto good = calendar(lunch);
        row("empty", QByteArray());
        row("something else", QByteArray("SUMMARY:Lunch"));
        row("cut", good.first(good.size() - 20));
        row("nested without end", QByteArray("BEGIN:VCALENDAR\r\n").repeated(100'000));
    }
    void aBrokenFileHidesNoOther()
    {
        QFETCH(QByteArray, text);
        m_scratch->write(u"good.ics"_s, calendar(lunch));
        m_scratch->write(u"broken.ics"_s, text);
        m_scratch->write(u"odd.ics"_s, calendar(odd));
        const LogLines log;
        QCOMPARE(titles(), QStringList(u"Lunch"_s));
        QCOMPARE(log.lines(), QStringList(u"buddy: the calendar file broken.ics cannot be read"_s));
    }

    void aFolderInItIsACalendar()
    {
        QVERIFY(m_scratch->path().mkdir(u"Uni"_s));
        m_scratch->write(u"Uni/lunch.ICS"_s, calendar(lunch));
        m_scratch->write(u"named.ics"_s, calendar(u"X-WR-CALNAME:Home|"_s + lunch));
        QStringList names;
        const auto events = eventsOf(folder());
        for (const auto& event : *events)
            names.append(event.calendarName.value_or(QString()));
        names.sort();
        QCOMPARE(names, (QStringList { u"Home"_s, u"Uni"_s }));
    }

    void aMissingFolderIsNoEmptyOne()
    {
        QVERIFY(!eventsOf(CalendarFolder(m_scratch->path(u"away"_s))));
    }

    void aLargeCalendarIsReadSoon()
    {
        QString events;
        for (int number = 0; number < 5'000; ++number)
            events +=
                u"BEGIN:VEVENT|UID:%1|DTSTART;TZID=Europe/Berlin:2026%2%3T090000|%4END:VEVENT|"_s
                    .arg(number)
                    .arg(number % 12 + 1, 2, 10, QChar(u'0'))
                    .arg(number % 28 + 1, 2, 10, QChar(u'0'))
                    .arg(number % 50 == 0 ? u"RRULE:FREQ=WEEKLY|"_s : QString());
        m_scratch->write(u"large.ics"_s, calendar(events));
        QElapsedTimer time;
        time.start();
        const auto found = eventsOf(folder());
        QVERIFY2(time.elapsed() < 5'000, qPrintable(QString::number(time.elapsed())));
        QVERIFY(found && found->size() > 200);
    }

    void whatIsSavedIsFound()
    {
        QVERIFY(m_scratch->path().mkdir(u"Uni"_s));
        const CalendarEventDTO party { .id = u"party"_s,
            .title = u"Party; \\ , ü\nall night"_s,
            .startDate = at(day, QTime(20, 0)),
            .endDate = at(day.addDays(1), QTime(2, 0)),
            .calendarName = u"Uni"_s,
            .notes = u"bring\ncake"_s };
        const CalendarEventDTO trip { .id = u"../trip"_s,
            .title = u"Trip"_s,
            .startDate = at(day),
            .endDate = at(day.addDays(2)),
            .calendarName = u".."_s,
            .isAllDay = true };
        for (const auto& event : { party, trip, party })
            QVERIFY(awaited(folder().saveEvent(event)));
        auto found = *eventsOf(folder());
        std::ranges::sort(found, {}, &CalendarEventDTO::title);
        QCOMPARE(found.size(), 2u);
        QVERIFY(found[0] == party);
        QCOMPARE(CalendarCases::shown(found[1]), u"10-20 to 10-22"_s);
        QCOMPARE(m_scratch->names(), QStringList(u"%2E%2E%2Ftrip.ics"_s));
        QVERIFY(QFile::exists(m_scratch->path(u"Uni/party.ics"_s)));
    }

    void aWriteThatFailsHalfWayLeavesNothingAndCanBeTriedAgain()
    {
        const ReminderDTO email {
            .id = u"email"_s, .title = u"Email Davis"_s, .dueDate = at(day, QTime(9, 0))
        };
        const auto whole = std::make_shared<FaultyFileOperations>();
        QVERIFY(awaited(folder(whole).saveReminder(email)));
        QVERIFY(m_scratch->read(u"email.ics"_s).contains("BEGIN:VALARM"));
        for (int call = 1; call <= whole->calls(); ++call) {
            m_scratch.emplace();
            const auto saved =
                awaited(folder(std::make_shared<FaultyFileOperations>(call)).saveReminder(email));
            QVERIFY(!saved);
            QVERIFY(saved.error().description.contains(u"cannot be written to"_s));
            QVERIFY(awaited(folder().saveReminder(email)));
            QCOMPARE(awaited(folder().fetchIncompleteReminders())->size(), 1u);
            QCOMPARE(m_scratch->names(), QStringList(u"email.ics"_s));
        }
    }

private:
    CalendarFolder folder(
        std::shared_ptr<const FileOperations> operations = std::make_shared<FileOperations>()) const
    {
        return CalendarFolder(m_scratch->path().path(),
            { [] {
                 return at({ 2026, 10, 19 });
             },
                [] { return berlin; } },
            std::move(operations));
    }

    static CalendarDataProviding::Result<std::vector<CalendarEventDTO>> eventsOf(
        CalendarFolder&& folder)
    {
        return awaited(folder.fetchEvents(at({ 2026, 10, 19 }), at({ 2026, 11, 2 })));
    }

    QStringList titles() const
    {
        QStringList titles;
        const auto events = eventsOf(folder());
        for (const auto& event : *events)
            titles.append(event.title);
        return titles;
    }

    const QDate day { 2026, 10, 20 };
    const QString lunch =
        u"BEGIN:VEVENT|UID:1|SUMMARY:Lunch|DTSTART:20261020T100000Z|END:VEVENT|"_s;
    /// Of a type that they do not have, of no date, and repeating without end.
    const QString odd =
        u"BEGIN:VEVENT|SUMMARY;VALUE=INTEGER:5|DTSTART;VALUE=TEXT:x|END:VEVENT|"
        "BEGIN:VEVENT|DTSTART:20269920T100000Z|RRULE:FREQ=DAILY|END:VEVENT|"
        "BEGIN:VEVENT|DTSTART:20200101T100000Z|RRULE:FREQ=SECONDLY|END:VEVENT|"
        "BEGIN:VEVENT|DTSTART:20200101T100000Z|RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30|END:VEVENT|"_s;
    std::optional<ScratchDirectory> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CalendarFolderTest)
#include "CalendarFolderTest.moc"
