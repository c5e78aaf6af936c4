#include "PobblewigDesktop/chat/PanelPlacement.h"

#include "support/TableRow.h"

namespace pobblewig {

class PanelPlacementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePanelStandsBesideTheBuddy_data()
    {
        constexpr QRect screen(0, 0, 1280, 800);
        constexpr QRect small(0, 0, 300, 300);
        constexpr QSize buddy(120, 140);
        QTest::addColumn<QRect>("buddy");
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<QRect>("panel");
        row("right", QRect({ 1150, 650 }, buddy), screen, QRect(738, 190, 400, 600));
        row("left", QRect({ 10, 650 }, buddy), screen, QRect(142, 190, 400, 600));
        row("room on both sides", QRect({ 500, 650 }, buddy), screen, QRect(632, 190, 400, 600));
        row("near the top", QRect({ 1150, 5 }, buddy), screen, QRect(738, 0, 400, 600));
        row("half below", QRect({ 1150, 740 }, buddy), screen, QRect(738, 200, 400, 600));
        row("on a screen to the left of the first", QRect({ -200, 650 }, buddy),
            screen.translated(-1280, 0), QRect(-612, 190, 400, 600));
        row("on a narrow screen", QRect({ 200, 1100 }, buddy), QRect(0, 0, 480, 1280),
            QRect(0, 488, 400, 600));
        row("hardly room anywhere", QRect({ 300, 250 }, buddy), QRect(0, 0, 640, 480),
            QRect(0, 0, 288, 480));
        row("a buddy over the whole screen", small, small, small);
    }
    void thePanelStandsBesideTheBuddy()
    {
        QFETCH(QRect, buddy);
        QFETCH(QRect, screen);
        QTEST(PanelPlacement::beside(buddy, { 400, 600 }, screen), "panel");
    }

    void theTitleBarStaysInReach_data()
    {
        columns<QPoint, QPoint>("corner", "reached");
        row("inside", QPoint(100, 100), QPoint(100, 100));
        row("a corner of it is enough", QPoint(1200, 780), QPoint(1200, 780));
        row("above", QPoint(100, -5), QPoint(100, 0));
        row("hardly anything left", QPoint(1201, 100), QPoint(880, 100));
        row("on a screen that went", QPoint(3000, 2000), QPoint(880, 200));
        row("on the other screen", QPoint(-500, 300), QPoint(-500, 300));
    }
    void theTitleBarStaysInReach()
    {
        QFETCH(QPoint, corner);
        QTEST(PanelPlacement::inReach({ corner, QSize(400, 600) },
                  { QRect(0, 0, 1280, 800), QRect(-800, 0, 800, 600) }),
            "reached");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PanelPlacementTest)
#include "PanelPlacementTest.moc"
