#include "PobblewigDesktop/bubble/BubblePlacement.h"

#include "support/TableRow.h"

namespace pobblewig {

using Side = BubblePlacement::Side;

class BubblePlacementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theBubbleStandsBesideTheBuddy_data()
    {
        constexpr QRect screen(0, 0, 1280, 800);
        constexpr QSize buddy(120, 140);
        columns<QRect, QRect, QRect, Side, QPoint>("buddy", "screen", "bubble", "side", "tail");
        row("above", QRect({ 500, 400 }, buddy), screen, QRect(460, 342, 200, 50), Side::above,
            QPoint(559, 391));
        row("in the corner", QRect({ 1160, 660 }, buddy), screen, QRect(1080, 602, 200, 50),
            Side::above, QPoint(1219, 651));
        row("partly off the screen", QRect({ 1240, 660 }, buddy), screen, QRect(1080, 602, 200, 50),
            Side::above, QPoint(1263, 651));
        row("at the top", QRect({ 500, 0 }, buddy), screen, QRect(292, 45, 200, 50), Side::left,
            QPoint(491, 69));
        row("at the top left", QRect({ 0, 0 }, buddy), screen, QRect(128, 45, 200, 50), Side::right,
            QPoint(128, 69));
        row("on a narrow screen", QRect({ 0, 0 }, buddy), QRect(0, 0, 240, 400),
            QRect(0, 148, 200, 50), Side::below, QPoint(59, 148));
        row("on a screen to the left", QRect({ -120, 660 }, buddy), screen.translated(-1280, 0),
            QRect(-200, 602, 200, 50), Side::above, QPoint(-60, 651));
        row("nowhere to go", QRect({ 0, 0 }, buddy), QRect({ 0, 0 }, buddy), QRect(0, 0, 200, 50),
            Side::above, QPoint(59, 49));
    }
    void theBubbleStandsBesideTheBuddy()
    {
        QFETCH(QRect, buddy);
        QFETCH(QRect, screen);
        const auto place = BubblePlacement::beside(buddy, { 200, 50 }, screen, {});
        QTEST(place.bubble, "bubble");
        QTEST(place.side, "side");
        QTEST(place.tail, "tail");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BubblePlacementTest)
#include "BubblePlacementTest.moc"
