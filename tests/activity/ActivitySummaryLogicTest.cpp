#include "activity/ActivitySummaryLogic.h"

#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;

class ActivitySummaryLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSixLongestOfTheRangeAreNamed()
    {
        const TimePoint from(1772352900s);
        const auto to = from + 24h;
        std::vector<ActivitySession> sessions;
        const auto add = [&](const char* name, TimePoint startedAt, double seconds) {
            sessions.push_back({
                .applicationName = QString::fromLatin1(name),
                .startedAt = startedAt,
                .durationSeconds = seconds,
            });
        };
        add("early", from - 1ms, 9999);
        add("late", to + 1ms, 9999);
        QCOMPARE(ActivitySummaryLogic::activitySummary(sessions, from, to), QString());
        add("glimpse", to, 59);
        add("twice", from, 90);
        add("twice", from + 1h, 90);
        QCOMPARE(ActivitySummaryLogic::activitySummary(sessions, from, to),
            QStringLiteral("twice 3 min; glimpse 0 min"));
        for (const auto* name : { "b", "c", "a", "d" })
            add(name, from, 119.9);
        add("e", from, 60);
        QCOMPARE(ActivitySummaryLogic::activitySummary(sessions, from, to),
            QStringLiteral("twice 3 min; a 1 min; b 1 min; c 1 min; d 1 min; e 1 min"));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ActivitySummaryLogicTest)
#include "ActivitySummaryLogicTest.moc"
