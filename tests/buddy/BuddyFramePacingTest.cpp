#include "buddy/BuddyFramePacing.h"

#include <QTest>

namespace pobblewig {

using BuddyFramePacing::Input;

class BuddyFramePacingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theIntervalFollowsWhatGoesOn_data()
    {
        using namespace BuddyFramePacing;
        QTest::addColumn<Input>("input");
        QTest::addColumn<Interval>("expected");
        QTest::newRow("quiet") << Input() << idle;
        QTest::newRow("asleep") << Input { .sleepAmount = 1 } << idle;
        QTest::newRow("working") << Input { .isActiveState = true } << full;
        QTest::newRow("dragged") << Input { .isDragging = true } << full;
        QTest::newRow("moved") << Input { .isMoving = true } << full;
        QTest::newRow("petted") << Input { .isPetting = true } << full;
        QTest::newRow("hearts") << Input { .hasHearts = true } << full;
        QTest::newRow("a meme over a sleeping buddy")
            << Input { .hasMeme = true, .sleepAmount = 1 } << full;
        QTest::newRow("changing its state") << Input { .isTransitioning = true } << full;
        QTest::newRow("working out of sight")
            << Input { .isOccluded = true, .isActiveState = true } << occluded;
    }
    void theIntervalFollowsWhatGoesOn()
    {
        QFETCH(Input, input);
        QFETCH(BuddyFramePacing::Interval, expected);
        QCOMPARE(BuddyFramePacing::interval(input).count(), expected.count());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyFramePacingTest)
#include "BuddyFramePacingTest.moc"
