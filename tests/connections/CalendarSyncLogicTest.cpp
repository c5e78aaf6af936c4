#include "connections/CalendarSyncLogic.h"

#include "connections/CalendarDataProviding.h"
#include "connections/CanvasSyncLogic.h"
#include "foundation/ISO8601.h"
#include "support/Awaited.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

/// 08:15 in UTC, 22:15 of the day before in Honolulu.
constexpr TimePoint now { 1772352900s };

ReferenceItem item(QStringView path, const QString& title, const QString& key, const QString& date)
{
    return { .path = path.toString(), .title = title, .details = { { key, JSONValue(date) } } };
}

ReferenceItem starting(const QString& title, TimePoint start)
{
    return item(
        CalendarSyncLogic::eventsPath, title, QStringLiteral("startAt"), ISO8601::format(start));
}

QString titles(const std::vector<ReferenceItem>& items)
{
    QStringList result;
    for (const auto& found : items)
        result += found.title;
    return result.join(u' ');
}

} // namespace

/// What of the reference memory concerns the next days, of the calendar and of Canvas.
class CalendarSyncLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDateIsReadAsServersWriteIt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<std::optional<TimePoint>>("time");
        const std::optional<TimePoint> none;
        row("whole seconds", QStringLiteral("2026-03-01T08:15:00Z"), std::optional(now));
        row("fractions", QStringLiteral("2026-03-01T08:15:00.250Z"), std::optional(now + 250ms));
        row("another zone", QStringLiteral("2026-02-28T22:15:00-10:00"), std::optional(now));
        row("no zone", QStringLiteral("2026-03-01T08:15:00"), none);
        row("words", QStringLiteral("tomorrow"), none);
        row("empty", QString(), none);
    }
    void aDateIsReadAsServersWriteIt()
    {
        QFETCH(QString, text);
        QFETCH(std::optional<TimePoint>, time);
        const auto due = item(u"x", {}, QStringLiteral("dueAt"), text);
        QVERIFY(CanvasSyncLogic::dueDate(due) == time);
        QVERIFY(CalendarSyncLogic::dueDate(due) == time);
        QVERIFY(!CalendarSyncLogic::startDate(due));
        const auto start = item(u"x", {}, QStringLiteral("startAt"), text);
        QVERIFY(CalendarSyncLogic::startDate(start) == time);
        auto number = due;
        number.details[QStringLiteral("dueAt")] = JSONValue(5);
        QVERIFY(!CanvasSyncLogic::dueDate(number));
    }

    void theWindowBeginsAfterNowAndHasALimit()
    {
        const auto inSevenDays = now + 24h * 7;
        const std::vector items { starting(QStringLiteral("late"), inSevenDays + 1s),
            starting(QStringLiteral("last"), inSevenDays), starting(QStringLiteral("now"), now),
            starting(QStringLiteral("first"), now + 1s), starting(QStringLiteral("same"), now + 1s),
            item(u"misc", QStringLiteral("elsewhere"), QStringLiteral("startAt"),
                ISO8601::format(now + 2s)) };
        const auto upcoming = [&](int limit) {
            return titles(CalendarSyncLogic::upcomingEvents(items, now, 7, limit));
        };
        QCOMPARE(upcoming(5), QStringLiteral("first same last"));
        QCOMPARE(upcoming(2), QStringLiteral("first same"));
        QCOMPARE(upcoming(0) + upcoming(-1), QString());
    }

    void eachKindLooksAtItsOwnSection()
    {
        const auto soon = ISO8601::format(now + 47h);
        std::vector<ReferenceItem> items;
        for (const auto path : { CanvasSyncLogic::deadlinesPath, CalendarSyncLogic::remindersPath })
            items.push_back(item(path, path.toString(), QStringLiteral("dueAt"), soon));
        items.push_back(starting(QStringLiteral("event"), now + 47h));
        QCOMPARE(titles(CanvasSyncLogic::upcomingDeadlines(items, now, 2, 9)),
            QStringLiteral("academics.deadlines"));
        QCOMPARE(titles(CalendarSyncLogic::dueReminders(items, now, 47, 9)),
            QStringLiteral("calendar.reminders"));
        QCOMPARE(titles(CalendarSyncLogic::dueReminders(items, now, 46, 9)), QString());
        QCOMPARE(
            titles(CalendarSyncLogic::upcomingEvents(items, now, 2, 9)), QStringLiteral("event"));
    }

    void todayIsTheUsersDay()
    {
        const std::vector items { starting(QStringLiteral("tomorrow"), now + 16h),
            starting(QStringLiteral("evening"), now + 15h),
            starting(QStringLiteral("night"), now - 8h),
            starting(QStringLiteral("yesterday"), now - 9h) };
        QCOMPARE(titles(CalendarSyncLogic::todaysEvents(items, now, {})),
            QStringLiteral("night evening"));
        // In Honolulu it is still the day before.
        const Calendar calendar { QTimeZone("Pacific/Honolulu"), QLocale::c() };
        QCOMPARE(titles(CalendarSyncLogic::todaysEvents(items, now, calendar)),
            QStringLiteral("yesterday night"));
    }

    void whereThereIsNoCalendarNothingIsGranted()
    {
        UnavailableCalendarProvider provider;
        QVERIFY(provider.authorizationStatus(CalendarEntity::events) != PermissionState::granted);
        QCOMPARE(awaited(provider.saveEvent({})).error().description,
            QStringLiteral("Calendar access is not granted"));
        QCOMPARE(awaited(provider.saveReminder({})).error().description,
            QStringLiteral("Reminders access is not granted"));
        QVERIFY(!awaited(provider.fetchEvents(now, now)));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CalendarSyncLogicTest)
#include "CalendarSyncLogicTest.moc"
