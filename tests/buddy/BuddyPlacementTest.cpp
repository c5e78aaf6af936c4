#include "buddy/BuddyPlacement.h"

#include <QTest>

#include <limits>

namespace pobblewig {

class BuddyPlacementTest : public QObject {
    Q_OBJECT

    using Screen = BuddyPlacement::Screen;
    using Screens = std::vector<Screen>;

    const QRect m_laptop { 0, 0, 1280, 800 };
    const QRect m_above { 0, -1080, 1920, 1080 };
    const QRect m_right { 2280, 0, 1000, 800 };
    const QRect m_left { -1920, 120, 1920, 1080 };

    static Screens bare(const std::vector<QRect>& rects)
    {
        Screens screens;
        for (const auto& rect : rects)
            screens.push_back({ rect, rect });
        return screens;
    }

private Q_SLOTS:
    void aPlaceIsBroughtBackWhereItCanBeSeen_data()
    {
        using Limits = std::numeric_limits<int>;
        QTest::addColumn<Screens>("screens");
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<QPoint>("expected");
        const auto row = [](const char* name, const std::vector<QRect>& screens, QPoint place,
                             QPoint expected) {
            QTest::newRow(name) << bare(screens) << place << expected;
        };
        const std::vector one { m_laptop };
        row("half over the edge", one, { 1, 400 }, { 1, 400 });
        row("more than half over it", one, { -1, 400 }, { 50, 400 });
        row("below", one, { 600, 900 }, { 600, 800 });
        row("overflowing", one, { Limits::max(), Limits::min() }, { 1230, 60 });
        row("on the second screen", { m_laptop, m_above }, { 1800, -300 }, { 1800, -300 });
        row("the second screen is gone", one, { 1800, -300 }, { 1230, 60 });
        row("nearer to the right screen", { m_laptop, m_right }, { 2200, 400 }, { 2330, 400 });
        row("left of everything", { m_left, m_laptop }, { -1800, 1100 }, { -1800, 1100 });
        row("that screen is gone", one, { -1800, 900 }, { 50, 800 });
        row("it went to the other side", { m_laptop, { 1280, 0, 1920, 1080 } }, { -1800, 900 },
            { 50, 800 });
        row("between two screens", { m_left, m_laptop }, { 0, 700 }, { 0, 700 });
        row("where neither of two reaches", { m_left, m_laptop }, { -10, 100 }, { 50, 100 });
        row("the screen has fewer pixels now", { { 0, 0, 800, 600 } }, { 1230, 800 }, { 750, 600 });
        row("the screen has more now", { { 0, 0, 2560, 1440 } }, { 1230, 800 }, { 1230, 800 });
        row("a screen smaller than the buddy", { { 0, 0, 40, 30 } }, { 500, 500 }, { 50, 30 });
        const Screens panels { { m_laptop, m_laptop.adjusted(64, 28, 0, -40) } };
        QTest::newRow("onto a panel by hand") << panels << QPoint(40, 790) << QPoint(40, 790);
        QTest::newRow("back, beside the panels") << panels << QPoint(-500, 900) << QPoint(114, 760);
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
