#include "connections/calendars/CalendarSyncLogic.h"

#include "connections/calendars/CalendarDataProviding.h"
#include "connections/canvas/CanvasSyncLogic.h"
#include "foundation/ISO8601.h"
#include "support/Awaited.h"
#include "support/Joined.h"
#include "support/TableRow.h"

Q_DECLARE_METATYPE(pobblewig::CalendarEventDTO)

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
    return item(CalendarSyncLogic::eventsPath, title, u"startAt"_s, ISO8601::format(start));
}

QString titles(const std::vector<ReferenceItem>& items)
{
    return joined(items, &ReferenceItem::title);
}

} // namespace

/// What of the reference memory concerns the next days, of the calendar and of Canvas.
class CalendarSyncLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDateIsReadAsServersWriteIt()
    {
        const auto none = std::optional<TimePoint>();
        const std::pair<QString, std::optional<TimePoint>> dates[] { { u"2026-03-01T08:15:00Z"_s,
                                                                         now },
            { u"2026-03-01T08:15:00.250Z"_s, now + 250ms }, { u"2026-02-28T22:15:00-10:00"_s, now },
            { u"2026-03-01T08:15:00"_s, none }, { u"tomorrow"_s, none }, { QString(), none } };
        for (const auto& [text, time] : dates) {
            const auto due = item(u"x", {}, u"dueAt"_s, text);
            QVERIFY(CanvasSyncLogic::dueDate(due) == time);
            QVERIFY(CalendarSyncLogic::dueDate(due) == time);
            QVERIFY(!CalendarSyncLogic::startDate(due));
            QVERIFY(CalendarSyncLogic::startDate(item(u"x", {}, u"startAt"_s, text)) == time);
        }
        auto number = item(u"x", {}, {}, {});
        number.details[u"dueAt"_s] = JSONValue(5);
        QVERIFY(!CanvasSyncLogic::dueDate(number));
    }

    void theWindowBeginsAfterNowAndHasALimit()
    {
        const auto inSevenDays = now + 24h * 7;
        const std::vector items { starting(u"late"_s, inSevenDays + 1s),
            starting(u"last"_s, inSevenDays), starting(u"now"_s, now),
            starting(u"first"_s, now + 1s), starting(u"same"_s, now + 1s),
            item(u"misc", u"elsewhere"_s, u"startAt"_s, ISO8601::format(now + 2s)) };
        const auto upcoming = [&](int limit) {
            return titles(CalendarSyncLogic::upcomingEvents(items, now, 7, limit));
        };
        QCOMPARE(upcoming(5), u"first|same|last"_s);
        QCOMPARE(upcoming(2), u"first|same"_s);
        QCOMPARE(upcoming(0) + upcoming(-1), QString());
    }

    void eachKindLooksAtItsOwnSection()
    {
        const auto soon = ISO8601::format(now + 47h);
        std::vector<ReferenceItem> items;
        for (const auto path : { CanvasSyncLogic::deadlinesPath, CalendarSyncLogic::remindersPath })
            items.push_back(item(path, path.toString(), u"dueAt"_s, soon));
        items.push_back(starting(u"event"_s, now + 47h));
        QCOMPARE(
            titles(CanvasSyncLogic::upcomingDeadlines(items, now, 2, 9)), u"academics.deadlines"_s);
        QCOMPARE(
            titles(CalendarSyncLogic::dueReminders(items, now, 47, 9)), u"calendar.reminders"_s);
        QCOMPARE(titles(CalendarSyncLogic::dueReminders(items, now, 46, 9)), QString());
        QCOMPARE(titles(CalendarSyncLogic::upcomingEvents(items, now, 2, 9)), u"event"_s);
    }

    void todayIsTheUsersDay()
    {
        const std::vector items { starting(u"tomorrow"_s, now + 16h),
            starting(u"evening"_s, now + 15h), starting(u"night"_s, now - 8h),
            starting(u"yesterday"_s, now - 9h) };
        QCOMPARE(titles(CalendarSyncLogic::todaysEvents(items, now, {})), u"night|evening"_s);
        // In Honolulu it is still the day before.
        const Calendar calendar { QTimeZone("Pacific/Honolulu"), QLocale::c() };
        QCOMPARE(
            titles(CalendarSyncLogic::todaysEvents(items, now, calendar)), u"yesterday|night"_s);
    }

    void anEventIsSummedUpOnTheUsersClock_data()
    {
        columns<CalendarEventDTO, QString>("event", "line");
        const CalendarEventDTO event { .id = u"1"_s, .title = u"Maths"_s, .startDate = now };
        const auto summed = [&](const char* name, auto change, const QString& line) {
            auto changed = event;
            change(changed);
            row(name, changed, line);
        };
        summed(
            "no end", [](auto&) {}, u"Maths: 2026-03-01 10:15"_s);
        summed(
            "some hours", [](auto& e) { e.endDate = now + 90min, e.calendarName = u"Uni\n2"_s; },
            u"Maths: 2026-03-01 10:15–11:45 · Uni 2"_s);
        summed(
            "until the next day", [](auto& e) { e.endDate = now + 16h; },
            u"Maths: 2026-03-01 10:15 – 2026-03-02 02:15"_s);
        summed(
            "a whole day", [](auto& e) { e.isAllDay = true; }, u"Maths: 2026-03-01"_s);
        summed(
            "whole days", [](auto& e) { e.isAllDay = true, e.endDate = now + 24h; },
            u"Maths: 2026-03-01 – 2026-03-02"_s);
        summed(
            "no title", [](auto& e) { e.title = u" \n"_s; },
            u"(untitled event): 2026-03-01 10:15"_s);
        summed(
            "long", [](auto& e) { e.title = QString(300, u'x'); },
            QString(199, u'x') + u"…: 2026-03-01 10:15"_s);
    }
    void anEventIsSummedUpOnTheUsersClock()
    {
        QFETCH(CalendarEventDTO, event);
        const Calendar helsinki { QTimeZone("Europe/Helsinki"), QLocale(QLocale::Arabic) };
        const auto item = CalendarSyncLogic::eventItem(event, now, helsinki);
        QTEST(item.title + u": "_s + item.summary, "line");
        QVERIFY(CalendarSyncLogic::startDate(item) == now);
    }

    void whatIsDueADayIsDueAllOfIt()
    {
        const Calendar helsinki { QTimeZone("Europe/Helsinki"), QLocale::c() };
        const auto midnight = now - 10h - 15min;
        const ReminderDTO reminder { .dueDate = midnight, .isAllDay = true };
        const auto item = CalendarSyncLogic::reminderItem(reminder, now, helsinki);
        QCOMPARE(item.title + u": "_s + item.summary, u"(untitled reminder): Due 2026-03-01"_s);
        QCOMPARE(CalendarSyncLogic::dueReminders({ item }, midnight + 23h, 1, 1).size(), 1u);
        QCOMPARE(CalendarSyncLogic::dueReminders({ item }, midnight + 24h, 1, 1).size(), 0u);
    }

    void whereThereIsNoCalendarNothingIsGranted()
    {
        UnavailableCalendarProvider provider;
        QVERIFY(provider.authorizationStatus(CalendarEntity::events) != PermissionState::granted);
        QCOMPARE(awaited(provider.saveEvent({})).error().description,
            u"Calendar access is not granted"_s);
        QCOMPARE(awaited(provider.saveReminder({})).error().description,
            u"Reminders access is not granted"_s);
        QVERIFY(!awaited(provider.fetchEvents(now, now)));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CalendarSyncLogicTest)
#include "CalendarSyncLogicTest.moc"
