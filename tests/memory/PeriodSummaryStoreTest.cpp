#include "memory/PeriodSummaryStore.h"

#include "memory/MemorySituation.h"
#include "support/Joined.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using std::chrono::days;

// 19:00 of the day before in New York.
const TimePoint firstDay(std::chrono::seconds(1772409600));
const Calendar newYork { QTimeZone("America/New_York"), QLocale(u"en_US"_s) };

PeriodSummary period(PeriodType type, int from, int length, const QString& summary)
{
    return { .id = QUuid::createUuid(),
        .periodType = type,
        .startDate = firstDay + days(from),
        .endDate = firstDay + days(from + length),
        .summary = summary };
}

} // namespace

class PeriodSummaryStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aListHoldsWhatOverlapsItsWindow()
    {
        const ScratchDirectory directory;
        PeriodSummaryStore store(directory);
        const auto third = store.add(period(PeriodType::day, 3, 1, u"3"_s));
        store.add(period(PeriodType::day, 3, 1, u"4"_s));
        QVERIFY(!store.latestWeekly(firstDay));
        store.add(period(PeriodType::week, 0, 7, u"w"_s));
        store.add(period(PeriodType::day, 1, 1, u"1"_s));
        const auto list = [&](std::optional<PeriodType> type, int from, int to) {
            return joined(store.list(type, firstDay + days(from), firstDay + days(to)),
                &PeriodSummary::summary);
        };
        QCOMPARE(list(std::nullopt, 2, 3), u"w|1|3|4"_s);
        QCOMPARE(list(PeriodType::day, 4, 9), u"3|4"_s);
        QCOMPARE(list(std::nullopt, -2, 0), u"w"_s);
        QCOMPARE(list(std::nullopt, 8, 9), QString());
        store.add(period(PeriodType::day, 4000, 1, u"a wrong clock"_s));
        QVERIFY(store.latestDaily(firstDay + days(3)) == third);
        QVERIFY(store.withID(third.id) == third);
        QVERIFY(!store.withID(QUuid::createUuid()));
        QVERIFY(PeriodSummaryStore(directory).all() == store.all());
        store.deleteAll();
        QVERIFY(PeriodSummaryStore(directory).all().empty());
    }

    void sevenDaysThatNoWeekHoldsMakeAWeek()
    {
        PeriodSummaryStore store(std::nullopt);
        auto week = period(PeriodType::week, 1, 7, u"w"_s);
        for (int day = 7; day > 0; --day) {
            QVERIFY(!store.needsWeeklyRollup());
            const auto daily = period(PeriodType::day, day, 1, QString::number(day));
            week.sourceDailySummaryIDs.push_back(store.add(daily).id);
        }
        QVERIFY(store.needsWeeklyRollup());
        QCOMPARE(joined(store.unsummarizedDailies(), &PeriodSummary::summary), u"1|2|3|4|5|6|7"_s);
        week.sourceDailySummaryIDs.pop_back();
        store.add(week);
        QCOMPARE(joined(store.unsummarizedDailies(), &PeriodSummary::summary), u"1"_s);
        QVERIFY(!store.needsWeeklyRollup());
    }

    void theSessionIsToldInTheUsersTime()
    {
        DailySession session { .dayKey = u"2026-03-01"_s, .startedAt = firstDay, .turnCount = 1 };
        QCOMPARE(MemorySituation::sessionInfo(session, newYork),
            u"Day 2026-03-01, session started 7:00 PM, 1 turns today.");
        QCOMPARE(MemorySituation::sessionInfo(std::nullopt, newYork), QString());
    }

    void theIndexHoldsTheLatestOfEach()
    {
        std::vector<PeriodSummary> weeklies;
        std::vector<PeriodSummary> dailies;
        for (int day = 0; day < 6; ++day) {
            weeklies.push_back(period(PeriodType::week, day, 6, u"w\nw"_s));
            dailies.push_back(period(PeriodType::day, day, 6, QString(161, u'd')));
            weeklies.back().id = dailies.back().id =
                QUuid(u"a0000000-0000-4000-8000-000000000000"_s);
        }
        const auto lines =
            MemorySituation::chronologicalIndex(weeklies, dailies, newYork).split(u'\n');
        QCOMPARE(lines.size(), 8);
        QCOMPARE(lines[0], u"- [id:a0000000] week 2026-03-04 – 2026-03-10: w w");
        QCOMPARE(lines[3], u"- [id:a0000000] day 2026-03-02: "_s + QString(160, u'd'));
    }

    void theLatestIntentsAreStillOpen()
    {
        std::vector<PeriodSummary> dailies(4);
        dailies[0].unresolvedIntent = { u"too old"_s };
        dailies[1].unresolvedIntent = { u"call"_s, u" \n"_s };
        dailies[3].unresolvedIntent = std::vector(11, u"write"_s);
        const auto lines = MemorySituation::unfinishedIntent(dailies).split(u'\n');
        QCOMPARE(lines.size(), 10);
        QCOMPARE(lines.front(), u"- call");
        QCOMPARE(lines.back(), u"- write");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PeriodSummaryStoreTest)
#include "PeriodSummaryStoreTest.moc"
