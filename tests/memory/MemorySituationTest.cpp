#include "memory/MemorySituation.h"

#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

const TimePoint lateInLondon(1772409600s); // 2026-03-02T00:00:00Z
const Calendar newYork { QTimeZone("America/New_York"), QLocale(QStringLiteral("en_US")) };

PeriodSummary summary(PeriodType type, int day, const QString& text)
{
    const auto start = lateInLondon + 24h * day;
    return { QUuid::fromString(u"a0000000-0000-4000-8000-000000000000"), type, start,
        start + 24h * 6, text, {}, {}, {}, {}, start };
}

} // namespace

class MemorySituationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSessionIsToldInTheUsersTime()
    {
        DailySession session;
        session.dayKey = QStringLiteral("2026-03-01");
        session.startedAt = lateInLondon;
        session.turnCount = 1;
        QCOMPARE(MemorySituation::sessionInfo(session, newYork),
            QStringLiteral("Day 2026-03-01, session started 7:00 PM, 1 turns today."));
        QCOMPARE(MemorySituation::sessionInfo(std::nullopt, newYork), QString());
    }

    void theIndexHoldsTheLatestOfEach()
    {
        std::vector<PeriodSummary> weeklies;
        std::vector<PeriodSummary> dailies;
        for (int day = 0; day < 6; ++day) {
            weeklies.push_back(summary(PeriodType::week, day, QStringLiteral("w\nw")));
            dailies.push_back(summary(PeriodType::day, day, QString(161, u'd')));
        }
        const auto lines =
            MemorySituation::chronologicalIndex(weeklies, dailies, newYork).split(u'\n');
        QCOMPARE(lines.size(), 8);
        QCOMPARE(lines[0], QStringLiteral("- [id:a0000000] week 2026-03-04 – 2026-03-10: w w"));
        QCOMPARE(lines[3], QStringLiteral("- [id:a0000000] day 2026-03-02: ") + QString(160, u'd'));
    }

    void theLatestIntentsAreStillOpen()
    {
        std::vector<PeriodSummary> dailies(4);
        dailies[0].unresolvedIntent = { QStringLiteral("too old") };
        dailies[1].unresolvedIntent = { QStringLiteral("call"), QStringLiteral(" \n") };
        dailies[3].unresolvedIntent = std::vector(11, QStringLiteral("write"));
        const auto lines = MemorySituation::unfinishedIntent(dailies).split(u'\n');
        QCOMPARE(lines.size(), 10);
        QCOMPARE(lines.front(), QStringLiteral("- call"));
        QCOMPARE(lines.back(), QStringLiteral("- write"));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemorySituationTest)
#include "MemorySituationTest.moc"
