#include "activity/ActivityTracker.h"

#include "ScriptedFrontmostApp.h"
#include "activity/DiscreetFrontmostAppProvider.h"
#include "support/FakeKeychain.h"
#include "support/FaultyFileOperations.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

const TimePoint start(std::chrono::seconds(1772352900));

ActivitySession closed(const QString& identifier, TimePoint startedAt, double seconds)
{
    return {
        .id = QUuid::createUuid(),
        .applicationName = identifier,
        .bundleIdentifier = identifier,
        .startedAt = startedAt,
        .endedAt = startedAt + std::chrono::seconds(qint64(seconds)),
        .durationSeconds = seconds,
    };
}

} // namespace

class ActivityTrackerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_desktop = ScriptedFrontmostApp();
        m_desktop.show(QStringLiteral("Writer"), QStringLiteral("writer"));
    }

    void pollsOnTheSameApplicationExtendOneSessionAndWriteNothing()
    {
        auto counted = directory();
        const auto operations = std::make_shared<FaultyFileOperations>();
        counted.operations = operations;
        ActivityTracker tracker(m_desktop, counted);
        tracker.poll(start);
        const auto opened = *tracker.currentSession();
        QVERIFY(opened.isActive && opened.durationSeconds == 0 && !opened.endedAt);
        m_desktop.show(QStringLiteral("Writer, another window"), QStringLiteral("writer"));
        m_desktop.idle = 120;
        tracker.poll(start + 20500ms);
        auto expected = opened;
        expected.durationSeconds = 20.5;
        expected.isActive = false;
        QVERIFY(tracker.currentSession() == expected);
        m_desktop.idle = 119.9;
        tracker.poll(start - 1h);
        QVERIFY(tracker.currentSession()->isActive);
        QCOMPARE(tracker.currentSession()->durationSeconds, 0.0);
        QCOMPARE(operations->calls(), 0);
        QVERIFY(tracker.history().empty());
    }

    void aChangeClosesTheSessionAndKeepsItForTheNextStart()
    {
        ActivityTracker tracker(m_desktop, directory());
        tracker.poll(start);
        auto expected = *tracker.currentSession();
        m_desktop.show(QStringLiteral("Browser"), QStringLiteral("browser"));
        tracker.poll(start + 40s);
        expected.endedAt = start + 40s;
        expected.durationSeconds = 40;
        expected.isActive = false;
        QCOMPARE(tracker.currentSession()->applicationName, QStringLiteral("Browser"));
        QVERIFY(tracker.history() == std::vector { expected });
        m_desktop.front.reset();
        tracker.poll(start + 60s);
        tracker.poll(start + 80s);
        QVERIFY(!tracker.currentSession());
        const ActivityTracker restarted(m_desktop, directory());
        QVERIFY(!restarted.currentSession());
        QVERIFY(restarted.history() == tracker.history());
        QCOMPARE(restarted.history().size(), 2u);
        QCOMPARE(restarted.history()[0].durationSeconds, 20.0);
        tracker.poll(start + 100s);
        m_desktop.show(QStringLiteral("Writer"), QStringLiteral("writer"));
        tracker.poll(start + 120s);
        tracker.deleteHistory();
        QVERIFY(!tracker.currentSession() && tracker.history().empty());
        QVERIFY(ActivityTracker(m_desktop, directory()).history().empty());
    }

    void theOldestSessionsGoByNumberAndByAge()
    {
        const auto oldest = start - days(14);
        std::vector<ActivitySession> sessions { closed(QStringLiteral("new"), start - 1h, 60),
            closed(QStringLiteral("ends just in time"), oldest - 1h, 3600),
            closed(QStringLiteral("a second too old"), oldest - 1h, 3599),
            closed(QStringLiteral("never ended"), oldest, 0),
            closed(QStringLiteral("one too many"), start, 0) };
        sessions[3].endedAt.reset();
        QVERIFY(JSONFileStore(directory(), QStringLiteral("activity.json")).save(sessions));
        ActivityTracker tracker(m_desktop, directory(), { .maxSessions = 4 });
        tracker.prune(start);
        QVERIFY((tracker.history() == std::vector { sessions[0], sessions[1], sessions[3] }));
        tracker.poll(start);
        m_desktop.front.reset();
        tracker.poll(start + 1s);
        QCOMPARE(tracker.history().size(), 2u);
        QVERIFY(tracker.history()[1] == sessions[0]);
    }

    void theDayOfTheUserIsSummedUpByCategory()
    {
        const Calendar kiritimati { QTimeZone("Pacific/Kiritimati"), QLocale::c() };
        const TimePoint midnight(1772359200s);
        const auto browser = QStringLiteral("org.mozilla.firefox");
        QVERIFY(JSONFileStore(directory(), QStringLiteral("activity.json"))
                    .save(std::vector { closed(browser, midnight + 24h, 1),
                        closed(browser, midnight + 24h - 1s, 2), closed(browser, midnight, 4),
                        closed(browser, midnight - 1s, 8) }));
        ActivityTracker tracker(m_desktop, directory());
        tracker.poll(midnight - 1h);
        tracker.poll(midnight + 1h);
        const std::map<AppCategory, double> expected { { AppCategory::browsing, 6 },
            { AppCategory::other, 7200 } };
        QVERIFY(tracker.categoryDurations(midnight + 1h, kiritimati) == expected);
    }

    void whatIsNeverWatchedReachesNoFile()
    {
        FakeKeychain keychain;
        SettingsStore settings(std::nullopt, keychain);
        const Moment moment { [] { return start; } };
        DiscreetFrontmostAppProvider discreet(
            &m_desktop, { settings, moment, { QStringLiteral("org.keepassxc.KeePassXC") } });
        const auto pause = [&](bool isPaused) {
            settings.update([&](auto& changed) { changed.pausedIndefinitely = isPaused; });
        };
        ActivityTracker tracker(discreet, directory());
        auto at = start;
        const auto poll = [&](const QString& name, const QString& id) {
            m_desktop.show(name, id);
            tracker.poll(at += 20s);
            return tracker.currentSession().has_value();
        };
        QVERIFY(poll(QStringLiteral("Writer"), QStringLiteral("writer")));
        QVERIFY(!poll(QStringLiteral("Secret 1"), QStringLiteral("org.KeePassXC.keepassxc")));
        settings.update(
            [](auto& changed) { changed.excludedBundleIDs = { QStringLiteral("COM.vault.app") }; });
        QVERIFY(!poll(QStringLiteral("Secret 2"), QStringLiteral("com.Vault.app")));
        QVERIFY(poll(QStringLiteral("Writer"), QStringLiteral("com.vault.app.help")));
        pause(true);
        const auto timesAsked = m_desktop.timesAsked;
        QVERIFY(!poll(QStringLiteral("Secret 3"), QStringLiteral("another")));
        QCOMPARE(m_desktop.timesAsked, timesAsked);
        pause(false);
        QVERIFY(poll(QStringLiteral("Browser"), QStringLiteral("browser")));
        QCOMPARE(tracker.history().size(), 2u);
        const auto files = QDir(m_scratch->path()).entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(files, QStringList(QStringLiteral("activity.json")));
        QFile file(m_scratch->filePath(files[0]));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto text = file.readAll();
        QVERIFY(text.contains("Writer") && !text.contains("Secret") && !text.contains("another"));
    }

private:
    using days = std::chrono::days;

    DataDirectory directory() const { return QDir(m_scratch->path()); }

    std::unique_ptr<QTemporaryDir> m_scratch;
    ScriptedFrontmostApp m_desktop;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ActivityTrackerTest)
#include "ActivityTrackerTest.moc"
