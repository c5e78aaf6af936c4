#include "buddy/BuddyPlacement.h"

#include <QTest>

#include <limits>

namespace pobblewig {

namespace {

const QRect laptop(0, 0, 1280, 800);
const QRect above(0, -1080, 1920, 1080);
const QRect right(1280, 0, 1000, 800);

} // namespace

class BuddyPlacementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPlaceIsBroughtBackWhereItCanBeSeen_data()
    {
        constexpr auto huge = std::numeric_limits<int>::max();
        constexpr auto tiny = std::numeric_limits<int>::min();
        QTest::addColumn<std::vector<QRect>>("screens");
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<QPoint>("expected");
        const std::vector one { laptop };
        QTest::newRow("in the midst") << one << QPoint(600, 400) << QPoint(600, 400);
        QTest::newRow("half over the edge") << one << QPoint(1, 400) << QPoint(1, 400);
        QTest::newRow("more than half over it") << one << QPoint(-1, 400) << QPoint(50, 400);
        QTest::newRow("below") << one << QPoint(600, 900) << QPoint(600, 800);
        QTest::newRow("past the lower right corner")
            << one << QPoint(2000, 2000) << QPoint(1230, 800);
        QTest::newRow("overflowing") << one << QPoint(huge, tiny) << QPoint(1230, 60);
        QTest::newRow("on the second screen")
            << std::vector { laptop, above } << QPoint(1800, -300) << QPoint(1800, -300);
        QTest::newRow("the second screen is gone") << one << QPoint(1800, -300) << QPoint(1230, 60);
        QTest::newRow("between the screens, nearer to the right one") << std::vector { laptop,
            right.translated(1000, 0) } << QPoint(2200, 400) << QPoint(2330, 400);
        QTest::newRow("a screen smaller than the buddy")
            << std::vector { QRect(0, 0, 40, 30) } << QPoint(500, 500) << QPoint(50, 30);
    }
    void aPlaceIsBroughtBackWhereItCanBeSeen()
    {
        QFETCH(std::vector<QRect>, screens);
        QFETCH(QPoint, place);
        QFETCH(QPoint, expected);
        QCOMPARE(BuddyPlacement::visiblePlace(place, QSize(100, 60), screens), expected);
    }

    void aLayoutIsNamedByItsScreensAlone()
    {
        const auto name = BuddyPlacement::layoutName({ laptop, above });
        QCOMPARE(BuddyPlacement::layoutName({ above, laptop }), name);
        QVERIFY(BuddyPlacement::layoutName({ laptop, right }) != name);
        QVERIFY(BuddyPlacement::layoutName({ laptop }) != name);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyPlacementTest)
#include "BuddyPlacementTest.moc"
