#include "buddy/BuddyPlacement.h"

#include "buddy/BuddySight.h"
#include "support/TableRow.h"

#include <limits>

namespace pobblewig {

class BuddyPlacementTest : public QObject {
    Q_OBJECT

    using Screen = BuddyPlacement::Screen;
    using Screens = std::vector<Screen>;
    using Windows = std::vector<BuddySight::Window>;

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
        columns<Screens, QPoint, QPoint>("screens", "place", "expected");
        const auto placed = [](const char* name, const std::vector<QRect>& screens, QPoint place,
                                QPoint expected) {
            QTest::newRow(name) << bare(screens) << place << expected;
        };
        const std::vector one { m_laptop };
        placed("half over the edge", one, { 1, 400 }, { 1, 400 });
        placed("more than half over it", one, { -1, 400 }, { 50, 400 });
        placed("below", one, { 600, 900 }, { 600, 800 });
        placed("overflowing", one, { Limits::max(), Limits::min() }, { 1230, 60 });
        placed("on the second screen", { m_laptop, m_above }, { 1800, -300 }, { 1800, -300 });
        placed("the second screen is gone", one, { 1800, -300 }, { 1230, 60 });
        placed("nearer to the right screen", { m_laptop, m_right }, { 2200, 400 }, { 2330, 400 });
        placed("left of everything", { m_left, m_laptop }, { -1800, 1100 }, { -1800, 1100 });
        placed("that screen is gone", one, { -1800, 900 }, { 50, 800 });
        placed("it went to the other side", { m_laptop, { 1280, 0, 1920, 1080 } }, { -1800, 900 },
            { 50, 800 });
        placed("between two screens", { m_left, m_laptop }, { 0, 700 }, { 0, 700 });
        placed("where neither of two reaches", { m_left, m_laptop }, { -10, 100 }, { 50, 100 });
        placed(
            "the screen has fewer pixels now", { { 0, 0, 800, 600 } }, { 1230, 800 }, { 750, 600 });
        placed("the screen has more now", { { 0, 0, 2560, 1440 } }, { 1230, 800 }, { 1230, 800 });
        placed("a screen smaller than the buddy", { { 0, 0, 40, 30 } }, { 500, 500 }, { 50, 30 });
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

    void aFullScreenIsInFront_data()
    {
        using Kind = BuddySight::Window::Kind;
        const QRect small(100, 100, 500, 400);
        const BuddySight::Window film { m_laptop, Kind::fullScreen };
        const BuddySight::Window text { small };
        columns<Windows, bool>("windows", "isInFront");
        row("nothing at all", Windows {}, false);
        row("a window", Windows { text }, false);
        row("a film", Windows { film, text }, true);
        row("a window before the film", Windows { text, film }, false);
        row("a panel and a dialog before it",
            Windows { { { 0, 0, 1280, 30 }, Kind::beside }, { small, Kind::beside }, film }, true);
        row("a film on the other screen", Windows { { m_left, Kind::fullScreen }, text }, false);
        row("work on the other screen", Windows { { { -900, 150, 800, 600 } }, film }, true);
        row("a film over both screens", Windows { { m_laptop.united(m_left), Kind::fullScreen } },
            true);
        row("a game without a word", Windows { { m_laptop } }, true);
        row("of a scaled size", Windows { { { 0, 0, 1279, 799 } } }, true);
        row("all but a panel", Windows { { { 0, 30, 1280, 770 } } }, false);
        row("as large as there is room", Windows { { m_laptop, Kind::maximised } }, false);
        row("the desktop's icons", Windows { { m_laptop, Kind::beside } }, false);
    }
    void aFullScreenIsInFront()
    {
        QFETCH(Windows, windows);
        QTEST(BuddySight::isFullScreenInFront(windows, m_laptop), "isInFront");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyPlacementTest)
#include "BuddyPlacementTest.moc"
