#include "buddy/BuddyPlacement.h"

#include <QTest>

#include <limits>

namespace pobblewig {

class BuddyPlacementTest : public QObject {
    Q_OBJECT

    using Screens = std::vector<QRect>;

    const QRect m_laptop { 0, 0, 1280, 800 };
    const QRect m_above { 0, -1080, 1920, 1080 };
    const QRect m_right { 2280, 0, 1000, 800 };

private Q_SLOTS:
    void aPlaceIsBroughtBackWhereItCanBeSeen_data()
    {
        using Limits = std::numeric_limits<int>;
        QTest::addColumn<Screens>("screens");
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<QPoint>("expected");
        const auto row = [](const char* name, const Screens& screens, QPoint place,
                             QPoint expected) {
            QTest::newRow(name) << screens << place << expected;
        };
        const Screens one { m_laptop };
        row("half over the edge", one, { 1, 400 }, { 1, 400 });
        row("more than half over it", one, { -1, 400 }, { 50, 400 });
        row("below", one, { 600, 900 }, { 600, 800 });
        row("overflowing", one, { Limits::max(), Limits::min() }, { 1230, 60 });
        row("on the second screen", { m_laptop, m_above }, { 1800, -300 }, { 1800, -300 });
        row("the second screen is gone", one, { 1800, -300 }, { 1230, 60 });
        row("nearer to the right screen", { m_laptop, m_right }, { 2200, 400 }, { 2330, 400 });
        row("a screen smaller than the buddy", { { 0, 0, 40, 30 } }, { 500, 500 }, { 50, 30 });
    }
    void aPlaceIsBroughtBackWhereItCanBeSeen()
    {
        QFETCH(Screens, screens);
        QFETCH(QPoint, place);
        QTEST(BuddyPlacement::visiblePlace(place, QSize(100, 60), screens), "expected");
    }

    void aLayoutIsNamedByItsScreensAlone()
    {
        const auto name = BuddyPlacement::layoutName({ m_laptop, m_above });
        QCOMPARE(BuddyPlacement::layoutName({ m_above, m_laptop }), name);
        QVERIFY(BuddyPlacement::layoutName({ m_laptop, m_right }) != name);
        QVERIFY(BuddyPlacement::layoutName({ m_laptop }) != name);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyPlacementTest)
#include "BuddyPlacementTest.moc"
