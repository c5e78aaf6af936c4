#include "activity/ActivityTracker.h"

#include "ScriptedFrontmostApp.h"
#include "activity/ActivityDayLogic.h"
#include "activity/ActivitySummaryLogic.h"
#include "activity/DiscreetFrontmostAppProvider.h"
#include "support/FakeKeychain.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

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
        m_scratch.emplace();
        m_desktop = ScriptedFrontmostApp();
        m_desktop.show(u"Writer"_s, u"writer"_s);
    }

    void pollsOnTheSameApplicationExtendOneSessionAndWriteNothing()
    {
        ActivityTracker tracker(m_desktop, *m_scratch);
        tracker.poll(start);
        const auto opened = *tracker.currentSession();
        QVERIFY(opened.isActive && opened.durationSeconds == 0 && !opened.endedAt);
        m_desktop.show(u"Writer, another window"_s, u"writer"_s);
        m_desktop.idle = 120;
        tracker.poll(start + 20500ms);
        auto expected = opened;
        expected.durationSeconds = 20.5;
        expected.isActive = false;
        expected.idle = { { start, start + 20500ms } };
        QVERIFY(tracker.currentSession() == expected);
        m_desktop.idle = 119.9;
        tracker.poll(start - 1h);
        QVERIFY(tracker.currentSession()->isActive);
        QCOMPARE(tracker.currentSession()->durationSeconds, 0.0);
        QVERIFY(m_scratch->names().isEmpty() && tracker.history().empty());
    }

    void aChangeClosesTheSessionAndKeepsItForTheNextStart()
    {
        ActivityTracker tracker(m_desktop, *m_scratch);
        tracker.poll(start);
        auto expected = *tracker.currentSession();
        m_desktop.show(u"Browser"_s, u"browser"_s);
        tracker.poll(start + 40s);
        expected.endedAt = start + 40s;
        expected.durationSeconds = 40;
        expected.isActive = false;
        QCOMPARE(tracker.currentSession()->applicationName, u"Browser"_s);
        QVERIFY(tracker.history() == std::vector { expected });
        m_desktop.front.reset();
        tracker.poll(start + 60s);
        tracker.poll(start + 80s);
        QVERIFY(!tracker.currentSession());
        const ActivityTracker restarted(m_desktop, *m_scratch);
        QVERIFY(!restarted.currentSession());
        QVERIFY(restarted.history() == tracker.history());
        QCOMPARE(restarted.history().size(), 2u);
        QCOMPARE(restarted.history()[0].durationSeconds, 20.0);
        tracker.poll(start + 100s);
        m_desktop.show(u"Writer"_s, u"writer"_s);
        tracker.poll(start + 120s);
        tracker.deleteHistory();
        QVERIFY(!tracker.currentSession() && tracker.history().empty());
        QVERIFY(ActivityTracker(m_desktop, *m_scratch).history().empty());
    }

    void noSessionEndsBeforeItBegins()
    {
        ActivityTracker tracker(m_desktop, std::nullopt);
        tracker.poll(start);
        m_desktop.front.reset();
        tracker.poll(start - 1h);
        QCOMPARE(tracker.history()[0].startedAt, tracker.history()[0].endedAt);
    }

    void timesWithoutInputAreNotedAndShown()
    {
        ActivityTracker tracker(m_desktop, std::nullopt);
        tracker.poll(start);
        for (const auto& [at, idle] :
            { std::pair(200s, 150.0), { 220s, 170.0 }, { 240s, 0.0 }, { 400s, 130.0 } }) {
            m_desktop.idle = idle;
            tracker.poll(start + at);
        }
        const auto session = *tracker.currentSession();
        const std::vector<ActivityIdle> expected { { start + 50s, start + 220s },
            { start + 270s, start + 400s } };
        QVERIFY(session.idle == expected);
        QStringList shown;
        const auto spans = ActivityDayLogic::between({ session }, start + 10s, start + 300s);
        for (const auto& span : spans)
            shown.append(u"%1 %2"_s.arg(span.seconds()).arg(span.isIdle));
        QCOMPARE(shown.join(u'|'), u"40 0|170 1|50 0|30 1");
        const auto kept = ActivityDayLogic::without({ session }, start + 100s, start + 350s);
        QVERIFY(kept.size() == 2 && kept[0].idle->front().from == start + 350s);
        QVERIFY(kept[1].idle->front().to == start + 100s);
    }

    void theOldestSessionsGoByNumberAndByAge()
    {
        const auto oldest = start - days(14);
        std::vector<ActivitySession> sessions { closed(u"new"_s, start - 1h, 60),
            closed(u"ends just in time"_s, oldest - 1h, 3600),
            closed(u"a second too old"_s, oldest - 1h, 3599), closed(u"never ended"_s, oldest, 0),
            closed(u"one too many"_s, start, 0) };
        sessions[3].endedAt.reset();
        QVERIFY(JSONFileStore(*m_scratch, u"activity.json"_s).save(sessions));
        ActivityTracker tracker(m_desktop, *m_scratch, { .maxSessions = 4 });
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
        const auto browser = u"org.mozilla.firefox"_s;
        QVERIFY(JSONFileStore(*m_scratch, u"activity.json"_s)
                    .save(std::vector { closed(browser, midnight + 24h, 1),
                        closed(browser, midnight + 24h - 1s, 2), closed(browser, midnight, 4),
                        closed(browser, midnight - 1s, 8) }));
        ActivityTracker tracker(m_desktop, *m_scratch);
        tracker.poll(midnight - 1h);
        tracker.poll(midnight + 1h);
        const std::map<AppCategory, double> expected { { AppCategory::browsing, 6 },
            { AppCategory::other, 7200 } };
        QVERIFY(tracker.categoryDurations(midnight + 1h, kiritimati) == expected);
    }

    void aSpanIsDeletedAndWhatReachesBeyondItIsCut_data()
    {
        columns<int, int, QStringList>("from", "to", "left");
        row("before", 0, 100, QStringList { u"0-100"_s });
        row("after", 200, 300, QStringList { u"200-300"_s });
        row("within", 110, 190, QStringList {});
        row("the same", 100, 200, QStringList {});
        row("reaches in", 50, 150, QStringList { u"50-100"_s });
        row("reaches out", 150, 250, QStringList { u"200-250"_s });
        row("around it", 50, 250, QStringList { u"200-250"_s, u"50-100"_s });
    }
    void aSpanIsDeletedAndWhatReachesBeyondItIsCut()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        ActivityTracker tracker(m_desktop, *m_scratch);
        tracker.poll(start + std::chrono::seconds(from));
        tracker.deleteBetween(start + 100s, start + 200s, start + std::chrono::seconds(to));
        QVERIFY(!tracker.currentSession());
        QStringList left;
        std::set<QUuid> ids;
        for (const auto& session : tracker.history()) {
            const auto begins = std::chrono::duration<double>(session.startedAt - start).count();
            const auto ends = std::chrono::duration<double>(*session.endedAt - start).count();
            QCOMPARE(session.durationSeconds, ends - begins);
            ids.insert(session.id);
            left.append(u"%1-%2"_s.arg(begins).arg(ends));
        }
        QTEST(left, "left");
        QCOMPARE(ids.size(), tracker.history().size());
        QVERIFY(ActivityTracker(m_desktop, *m_scratch).history() == tracker.history());
    }

    void aDayShowsWhatLiesBetweenItsMidnights()
    {
        const Calendar berlin { QTimeZone("Europe/Berlin"), QLocale(u"de_DE"_s) };
        const QDate springForward(2026, 3, 29);
        const TimePoint midnight(1774738800s);
        const std::vector sessions { closed(u"late"_s, midnight + 22h + 59min, 120),
            closed(u"kate"_s, midnight + 1h, 60), closed(u"early"_s, midnight - 30s, 90),
            closed(u"next day"_s, midnight + 23h, 60) };
        const auto day = ActivityDayLogic::day(sessions, springForward, berlin);
        QCOMPARE(day.end - day.start, 23h);
        const std::vector<ActivitySpan> expected { { u"early"_s, AppCategory::other, midnight,
                                                       midnight + 60s },
            { u"kate"_s, AppCategory::development, midnight + 1h, midnight + 1h + 60s },
            { u"late"_s, AppCategory::other, day.end - 60s, day.end } };
        QVERIFY(day.spans == expected);
        const auto week = ActivityDayLogic::week(sessions, springForward, berlin);
        QCOMPARE(week.front().day, QDate(2026, 3, 23));
        QVERIFY(week.size() == 7 && week.back() == day);
        const std::map<AppCategory, double> categories { { AppCategory::development, 60 },
            { AppCategory::other, 150 } };
        QVERIFY(ActivityDayLogic::categories(week) == categories);
        QCOMPARE(ActivityDayLogic::applications(week).size(), 3u);
        QCOMPARE(ActivityDayLogic::applications(week).back().seconds, 60.0);
    }

    void whatIsNeverWatchedReachesNoFile()
    {
        FakeKeychain keychain;
        SettingsStore settings(std::nullopt, keychain);
        const Moment moment { [] { return start; } };
        const auto identifierOf = [](const QString& name) {
            return name == u"diary" ? std::optional(u"org.example.diary"_s) : std::nullopt;
        };
        DiscreetFrontmostAppProvider discreet(
            &m_desktop, { settings, moment, { u"org.keepassxc.KeePassXC"_s }, identifierOf });
        const auto pause = [&](bool isPaused) {
            settings.update([&](auto& changed) { changed.pausedIndefinitely = isPaused; });
        };
        ActivityTracker tracker(discreet, *m_scratch);
        m_desktop.show(u"a\nb\u202e"_s + QString(300, u'x'), u"long"_s);
        QCOMPARE(discreet.frontmostApp()->name.size(), 200);
        QVERIFY(discreet.frontmostApp()->name.startsWith(u"a bxx"));
        auto at = start;
        const auto poll = [&](const QString& name, const QString& id) {
            m_desktop.show(name, id);
            tracker.poll(at += 20s);
            return tracker.currentSession().has_value();
        };
        QVERIFY(poll(u"Writer"_s, u"writer"_s));
        QVERIFY(!poll(u"Secret 1"_s, u"org.KeePassXC.keepassxc"_s));
        settings.update([](auto& changed) {
            changed.excludedBundleIDs = { u"COM.vault.app"_s, u"diary"_s };
        });
        QVERIFY(!poll(u"Secret 4"_s, u"org.example.Diary"_s));
        QVERIFY(!poll(u"Secret 2"_s, u"com.Vault.app"_s));
        QVERIFY(poll(u"Writer"_s, u"com.vault.app.help"_s));
        pause(true);
        const auto timesAsked = m_desktop.timesAsked;
        QVERIFY(!poll(u"Secret 3"_s, u"another"_s));
        QCOMPARE(m_desktop.timesAsked, timesAsked);
        pause(false);
        QVERIFY(poll(u"Browser"_s, u"browser"_s));
        QCOMPARE(tracker.history().size(), 2u);
        QCOMPARE(m_scratch->names(), QStringList(u"activity.json"_s));
        const auto text = m_scratch->read(u"activity.json"_s);
        QVERIFY(text.contains("Writer") && !text.contains("Secret") && !text.contains("another"));
    }

    void theSixLongestOfTheRangeAreNamed()
    {
        const auto to = start + 24h;
        std::vector<ActivitySession> sessions { closed(u"early"_s, start - 1ms, 9999),
            closed(u"late"_s, to + 1ms, 9999) };
        const auto summary = [&] {
            return ActivitySummaryLogic::activitySummary(sessions, start, to);
        };
        QCOMPARE(summary(), QString());
        sessions.push_back(closed(u"glimpse"_s, to, 59));
        for (const auto at : { start, start + 1h })
            sessions.push_back(closed(u"twice"_s, at, 90));
        QCOMPARE(summary(), u"twice 3 min; glimpse 0 min");
        for (const auto& name : { u"b"_s, u"c"_s, u"a"_s, u"d"_s })
            sessions.push_back(closed(name, start, 119.9));
        sessions.push_back(closed(u"e"_s, start, 60));
        QCOMPARE(summary(), u"twice 3 min; a 1 min; b 1 min; c 1 min; d 1 min; e 1 min");
    }

    void anApplicationHasOneCategory()
    {
        using enum AppCategory;
        // Some count by any part of the identifier, short names by a whole word of it.
        const std::pair<AppCategory, QStringList> identifiers[] {
            { development,
                { u"com.microsoft.VSCode"_s, u"dev.zed.Zed-Preview"_s, u"org.gnome.Terminal"_s,
                    u"org.kde.kate"_s, u"org.skate.kate"_s } },
            { browsing,
                { u"com.microsoft.edgemac"_s, u"org.knowledge.base"_s,
                    u"com.google.Chrome.youtube"_s } },
            { entertainment, { u"com.spotify.client"_s, u"mpv"_s, u"snap_mpv-player.desktop"_s } },
            { social, { u"com.tinyspeck.slackmacgap"_s } },
            { productivity, { u"com.apple.Notes"_s, u"libreoffice-writer"_s } },
            { other,
                { u"com.apple.mail"_s, u"org.mozilla.Thunderbird"_s, u"mpv2"_s,
                    u"org.skate.skater"_s } },
        };
        for (const auto& [category, all] : identifiers) {
            for (const auto& identifier : all)
                QVERIFY2(classify(identifier, {}) == category, qPrintable(identifier));
        }
        QVERIFY(classify(u"org.mozilla.firefox"_s, u"Cats - YouTube"_s) == entertainment);
        QVERIFY(classify(u"org.chromium.Chromium"_s, u"Sources of YouGov"_s) == browsing);
        for (const auto& noBrowser : { u"org.gnome.Builder"_s, QString() })
            QVERIFY(classify(noBrowser, u"YouTube"_s) == other);
    }

private:
    using days = std::chrono::days;

    std::optional<ScratchDirectory> m_scratch;
    ScriptedFrontmostApp m_desktop;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ActivityTrackerTest)
#include "ActivityTrackerTest.moc"
