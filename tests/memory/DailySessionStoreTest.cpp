#include "memory/DailySessionStore.h"

#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

using namespace std::chrono_literals;

class DailySessionStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSilenceIntoAnotherDayEndsASession_data()
    {
        columns<QString, QString, bool>("lastActivity", "now", "ends");
        row("past midnight", "Tokyo 2026-03-03T23:50", "Tokyo 2026-03-04T02:00", false);
        row("a moment before", "Tokyo 2026-03-03T23:50:01", "Tokyo 2026-03-04T04:50", false);
        row("five hours", "Tokyo 2026-03-03T23:50", "Tokyo 2026-03-04T04:50", true);
        row("same day", "Tokyo 2026-03-03T07:00", "Tokyo 2026-03-03T23:00", false);
        row("a clock set back", "Tokyo 2026-03-04T00:01", "Tokyo 2026-03-03T23:59", false);
        row("a wrong clock set right", "Tokyo 2030-03-03T07:00", "Tokyo 2026-03-03T07:00", true);
        row("a year later", "Tokyo 2026-03-03T07:00", "Tokyo 2027-03-03T07:00", true);
        row("short night", "New_York 2026-03-07T23:50", "New_York 2026-03-08T05:49", false);
        row("short night over", "New_York 2026-03-07T23:50", "New_York 2026-03-08T05:50", true);
        row("long night", "New_York 2026-10-31T23:50", "New_York 2026-11-01T03:49", false);
        row("long night over", "New_York 2026-10-31T23:50", "New_York 2026-11-01T03:50", true);
        row("in the air", "New_York 2026-03-03T10:00", "Tokyo 2026-03-04T04:59", false);
        row("landed", "New_York 2026-03-03T10:00", "Tokyo 2026-03-04T05:00", true);
        row("a day won", "Tokyo 2026-03-04T08:00", "New_York 2026-03-04T08:00", false);
        row("the day before", "Tokyo 2026-03-04T08:00", "New_York 2026-03-03T23:00", true);
    }
    void aSilenceIntoAnotherDayEndsASession()
    {
        QFETCH(QString, lastActivity);
        QFETCH(QString, now);
        DailySessionStore store(std::nullopt);
        store.ensureActiveSession(time(lastActivity), calendar(lastActivity));
        QTEST(store.shouldRollOver(time(now), calendar(now)), "ends");
        store.finalizeActiveSession({}, time(lastActivity));
        QVERIFY(!store.shouldRollOver(time(now), calendar(now)));
    }

    void noSessionEndsBeforeItBegins()
    {
        DailySessionStore store(std::nullopt);
        store.ensureActiveSession(morning, Calendar());
        const auto session = *store.finalizeActiveSession({}, morning - 1h);
        QCOMPARE(session.startedAt, session.endedAt);
        QCOMPARE(session.lastActivityAt, session.endedAt);
        store.startNewSession(morning - 1h, {}, Calendar());
        store.finalizeActiveSession({}, morning);
        QCOMPARE(store.previousSession()->endedAt, morning);
    }

    void onlyAnActiveSessionChanges()
    {
        const ScratchDirectory directory;
        DailySessionStore store(directory);
        auto expected = store.ensureActiveSession(morning, Calendar());
        QVERIFY(store.ensureActiveSession(morning + 24h, Calendar()) == expected);
        const DailySessionStore::Closing closing { u"Studied"_s, u"Editor"_s, QUuid::createUuid() };
        expected.turnCount = 1;
        expected.endedAt = morning + 3h;
        expected.lastActivityAt = morning + 2h;
        expected.observationIDs = { QUuid::createUuid() };
        expected.lastExtractedMessageID = QUuid::createUuid();
        std::tie(expected.summary, expected.activitySummary, expected.dailySummaryID) =
            std::tie(closing.summary, closing.activitySummary, closing.dailySummaryID);
        for (const bool isActive : { true, false }) {
            store.recordTurn(morning + 1h);
            store.touch(morning + 2h);
            store.linkObservation(expected.observationIDs.front());
            store.markExtracted(*expected.lastExtractedMessageID);
            QCOMPARE(store.finalizeActiveSession(closing, morning + 3h).has_value(), isActive);
            QVERIFY(store.sessions() == std::vector { expected });
        }
        QVERIFY(DailySessionStore(directory).sessions() == store.sessions());
        QVERIFY(store.startNewSession(morning + 4h, {}, Calendar()).lastExtractedMessageID
            == expected.lastExtractedMessageID);
        store.deleteAll();
        QVERIFY(DailySessionStore(directory).sessions().empty());
    }

    void theLatestNinetySessionsAreKeptNewestFirst()
    {
        DailySessionStore store(std::nullopt);
        const DailySession imported { .id = QUuid::createUuid(), .isImported = true };
        store.adoptImportedSession(imported);
        store.adoptImportedSession({ .id = QUuid::createUuid(), .isImported = true });
        QVERIFY(store.sessions() == std::vector { imported });
        auto last = store.finalizeActiveSession({}, morning)->id;
        for (int day = 1; day <= 90; ++day) {
            QCOMPARE(store.previousSession()->id, last);
            QCOMPARE(store.sessions().back().id, imported.id);
            last = store.startNewSession(morning + day * 24h, last, Calendar()).id;
            QCOMPARE(store.activeSession()->id, last);
            store.finalizeActiveSession({}, morning + day * 24h);
        }
        QCOMPARE(store.sessions().size(), 90u);
        QCOMPARE(store.sessions().front().id, last);
        QCOMPARE(store.sessions().back().previousSessionID, imported.id);
    }

private:
    /// `moment` is like "Tokyo 2026-03-03T23:50".
    static Calendar calendar(const QString& moment)
    {
        const auto city = moment.section(u' ', 0, 0);
        return { QTimeZone((city == u"Tokyo" ? "Asia/" : "America/") + city.toLatin1()) };
    }
    static TimePoint time(const QString& moment)
    {
        auto local = QDateTime::fromString(moment.section(u' ', 1), Qt::ISODate);
        local.setTimeZone(calendar(moment).timeZone);
        return TimePoint(std::chrono::milliseconds(local.toMSecsSinceEpoch()));
    }

    const TimePoint morning = time(u"Tokyo 2026-03-03T07:00"_s);
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DailySessionStoreTest)
#include "DailySessionStoreTest.moc"
