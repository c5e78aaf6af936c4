#include "PobblewigDesktop/PanelPlacement.h"

#include <QTest>

namespace pobblewig {

class PanelPlacementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePanelStandsBesideTheBuddy_data()
    {
        constexpr QRect screen(0, 0, 1280, 800);
        QTest::addColumn<QRect>("buddy");
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<QRect>("panel");
        QTest::newRow("bottom right corner")
            << QRect(1150, 650, 120, 140) << screen << QRect(738, 190, 400, 600);
        QTest::newRow("bottom left corner")
            << QRect(10, 650, 120, 140) << screen << QRect(142, 190, 400, 600);
        QTest::newRow("near the top")
            << QRect(1150, 5, 120, 140) << screen << QRect(738, 0, 400, 600);
        QTest::newRow("half below the screen")
            << QRect(1150, 740, 120, 140) << screen << QRect(738, 200, 400, 600);
        QTest::newRow("a screen to the left of the first") << QRect(-200, 650, 120,
            140) << screen.translated(-1280, 0) << QRect(-612, 190, 400, 600);
        QTest::newRow("a narrow screen, upright")
            << QRect(200, 1100, 120, 140) << QRect(0, 0, 480, 1280) << QRect(0, 488, 400, 600);
        QTest::newRow("hardly room anywhere")
            << QRect(300, 250, 120, 140) << QRect(0, 0, 640, 480) << QRect(0, 0, 288, 480);
        QTest::newRow("a buddy over the whole screen")
            << QRect(0, 0, 300, 300) << QRect(0, 0, 300, 300) << QRect(0, 0, 300, 300);
    }
    void thePanelStandsBesideTheBuddy()
    {
        QFETCH(QRect, buddy);
        QFETCH(QRect, screen);
        QFETCH(QRect, panel);
        QCOMPARE(PanelPlacement::beside(buddy, { 400, 600 }, screen), panel);
    }

    void itNeverCoversTheBuddyNorLeavesTheScreen()
    {
        constexpr QRect screen(0, 0, 1024, 768);
        for (auto x = -60; x < screen.width(); x += 41) {
            for (auto y = -60; y < screen.height(); y += 37) {
                const QRect buddy(x, y, 120, 140);
                const auto panel = PanelPlacement::beside(buddy, { 400, 600 }, screen);
                QVERIFY(!panel.intersects(buddy));
                QVERIFY(screen.contains(panel));
                QCOMPARE(panel.size(), QSize(400, 600));
            }
        }
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PanelPlacementTest)
#include "PanelPlacementTest.moc"
