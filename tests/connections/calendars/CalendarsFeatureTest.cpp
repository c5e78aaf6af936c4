#include "connections/calendars/CalendarsFeature.h"

#include "connections/calendars/CalendarSyncLogic.h"
#include "support/Awaited.h"
#include "support/Joined.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedCalendar.h"
#include "support/ScriptedStores.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;

class CalendarsFeatureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_calendar.emplace();
        m_stores.emplace(*m_scratch);
        start();
        enable(true, true);
        m_calendar->events = { lesson(u"b"_s, 2h), lesson(u"a"_s, 1h), lesson(u"a"_s, 25h) };
        m_calendar->reminders = { { .id = u"r"_s, .title = u"Tea"_s, .dueDate = now() + 3h } };
    }

    void whatTheCalendarsHoldIsRemembered()
    {
        awaited(m->tick());
        QCOMPARE(titles(CalendarSyncLogic::eventsPath), u"a|b|a"_s);
        QCOMPARE(titles(CalendarSyncLogic::remindersPath), u"Tea"_s);
        const CalendarSyncState expected { now(), u"ok"_s, {}, 3, 1 };
        QVERIFY(published().sync == expected);
        start();
        QVERIFY(published().sync == expected);
        m_calendar->events.clear();
        awaited(m->syncNow());
        QCOMPARE(titles(CalendarSyncLogic::eventsPath), QString());
    }

    void whatStaysTheSameIsNotWritten()
    {
        awaited(m->syncNow());
        const auto before = items(CalendarSyncLogic::eventsPath);
        const auto revision = m_stores->memory.reference.revision();
        m_stores->time += 1h;
        awaited(m->syncNow());
        QCOMPARE(m_stores->memory.reference.revision(), revision);
        m_calendar->events[0].notes = u"new"_s;
        std::swap(m_calendar->events[0], m_calendar->events[2]);
        awaited(m->syncNow());
        const auto after = items(CalendarSyncLogic::eventsPath);
        QVERIFY(after[0] == before[0] && after[2] == before[2]);
        QCOMPARE(after[1].id, before[1].id);
        QVERIFY(after[1].createdAt == before[1].createdAt);
        QVERIFY(after[1].updatedAt == now());
    }

    void whatCannotBeReadStays_data()
    {
        columns<bool, bool, QString>("denied", "outage", "state");
        row("denied", true, false, u"partial: calendar access not granted, 0 and 1"_s);
        row("nothing answers", false, true, u"failed: no answer, 0 and 0"_s);
        row("both", true, true, u"failed: calendar access not granted; no answer, 0 and 0"_s);
    }
    void whatCannotBeReadStays()
    {
        awaited(m->syncNow());
        QFETCH(bool, denied);
        QFETCH(bool, outage);
        if (denied)
            m_calendar->denied = CalendarEntity::events;
        if (outage)
            m_calendar->outage = WriteError::unsupported(u"no answer"_s);
        awaited(m->syncNow());
        const auto& sync = published().sync;
        QTEST(u"%1: %2, %3 and %4"_s.arg(sync.lastStatus, *sync.lastError)
                  .arg(sync.eventCount)
                  .arg(sync.reminderCount),
            "state");
        QCOMPARE(titles(CalendarSyncLogic::eventsPath), u"a|b|a"_s);
        QCOMPARE(titles(CalendarSyncLogic::remindersPath), u"Tea"_s);
    }

    void aPollSyncsWhenItIsDue()
    {
        enable(false, false);
        awaited(m->tick());
        awaited(m->syncNow());
        QCOMPARE(m_calendar->reads, 0);
        enable(true, false);
        for (const auto step : { 0min, 59min, 1min }) {
            m_stores->time += step;
            awaited(m->tick());
        }
        QCOMPARE(m_calendar->reads, 2);
        QCOMPARE(titles(CalendarSyncLogic::remindersPath), QString());
        m_stores->time += 1h;
        m_calendar->outage = WriteError::unsupported({});
        awaited(m->tick());
        awaited(m->tick());
        QCOMPARE(m_calendar->reads, 3);
    }

    void thereAreNeverTwoSyncsAtOnce()
    {
        m_calendar->gate.emplace();
        const auto first = m->tick();
        QVERIFY(published().isSyncing);
        awaited(m->tick());
        awaited(m->syncNow());
        QCOMPARE(m_calendar->reads, 1);
        // What was asked for in the meantime follows.
        m_calendar->gate->sink().finish();
        QTRY_VERIFY(!published().isSyncing);
        QCOMPARE(m_calendar->reads, 2);
    }

private:
    void start()
    {
        m.emplace(CalendarsFeature::Parts { m_stores->settings, m_stores->memory.reference,
                      *m_calendar, DataDirectory(*m_scratch) },
            m_stores->moment);
    }

    void enable(bool calendars, bool reminders)
    {
        m_stores->settings.update([&](AppSettings& settings) {
            settings.calendarSyncEnabled = calendars;
            settings.remindersSyncEnabled = reminders;
        });
    }

    TimePoint now() const { return m_stores->time; }

    CalendarEventDTO lesson(const QString& title, std::chrono::hours after) const
    {
        return { .id = title, .title = title, .startDate = now() + after };
    }

    const CalendarState& published()
    {
        m->publish(m_state);
        return m_state.of<CalendarState>();
    }

    std::vector<ReferenceItem> items(QStringView path) const
    {
        auto all = m_stores->memory.reference.allItems();
        std::erase_if(all, [&](const auto& item) { return item.path != path; });
        return all;
    }

    QString titles(QStringView path) const { return joined(items(path), &ReferenceItem::title); }

    std::optional<ScratchDirectory> m_scratch;
    std::optional<ScriptedCalendar> m_calendar;
    std::optional<ScriptedStores> m_stores;
    std::optional<CalendarsFeature> m;
    PublishedState m_state;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CalendarsFeatureTest)
#include "CalendarsFeatureTest.moc"
