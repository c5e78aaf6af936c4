#include "buddy/BuddyLayout.h"
#include "buddy/BuddyPoses.h"

#include <QTest>

namespace pobblewig {

namespace {

/// Frames of one minute of breathing.
std::vector<BuddyLayout> breathing(const BuddyCanvas& canvas)
{
    std::vector<BuddyLayout> frames;
    for (int frame = 0; frame < 60 * 15; ++frame)
        frames.emplace_back(BuddyPoses::idle(frame / 15.0), canvas);
    return frames;
}

QRect cell(const BuddyLayout& layout, int row, int col)
{
    return layout.rect({ .row = row, .col = col, .length = 1, .rgb = {} });
}

} // namespace

class BuddyLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aBreathingBuddyStandsFirmAndWhole_data()
    {
        QTest::addColumn<double>("sizeScale");
        QTest::addColumn<double>("devicePixelRatio");
        QTest::newRow("smallest") << 0.5 << 1.0;
        QTest::newRow("usual") << 1.0 << 1.0;
        QTest::newRow("between whole pixels") << 1.0 << 1.15;
        QTest::newRow("largest on a fine screen") << 3.0 << 2.0;
    }
    void aBreathingBuddyStandsFirmAndWhole()
    {
        QFETCH(double, sizeScale);
        QFETCH(double, devicePixelRatio);
        const auto canvas = BuddyCanvas::ofScale(sizeScale, devicePixelRatio);
        const QRect area(QPoint(), canvas.size());
        const auto feet = [](const BuddyLayout& layout) {
            return std::pair(cell(layout, 7, 2).bottomLeft(), cell(layout, 7, 13).bottomRight());
        };
        const auto frames = breathing(canvas);
        for (const auto& frame : frames) {
            QCOMPARE(feet(frame), feet(frames.front()));
            QCOMPARE(feet(frame).first.y(), area.bottom());
            for (int row = 0; row < BuddyBitmap::rows; ++row) {
                QVERIFY(area.contains(cell(frame, row, 0)));
                QVERIFY(area.contains(cell(frame, row, 15)));
                QVERIFY(
                    row == 0 || cell(frame, row, 8).top() == cell(frame, row - 1, 8).bottom() + 1);
                for (int col = 1; col < BuddyBitmap::columns; ++col) {
                    QVERIFY(!cell(frame, row, col).isEmpty());
                    QCOMPARE(cell(frame, row, col).left(), cell(frame, row, col - 1).right() + 1);
                }
            }
        }
    }

    void fewFramesOfBreathingDiffer()
    {
        const auto frames = breathing(BuddyCanvas::ofScale(1, 1));
        size_t changes = 0;
        for (size_t i = 1; i < frames.size(); ++i)
            changes += frames[i] == frames[i - 1] ? 0 : 1;
        QVERIFY(changes > 60);
        QVERIFY(changes < frames.size() / 4);
    }

    void onlyAHopOfAPointLeavesTheGround_data()
    {
        QTest::addColumn<double>("yOff");
        QTest::addColumn<int>("feet");
        QTest::newRow("breath in") << 0.9 << 0;
        QTest::newRow("breath out") << -0.9 << 0;
        QTest::newRow("a point") << 1.0 << 2;
        QTest::newRow("a leap") << 14.0 << 28;
    }
    void onlyAHopOfAPointLeavesTheGround()
    {
        QFETCH(double, yOff);
        QFETCH(int, feet);
        const auto canvas = BuddyCanvas::ofScale(1, 2);
        const BuddyLayout layout({ .yOff = yOff }, canvas);
        QCOMPARE(canvas.size().height() - 1 - cell(layout, 7, 2).bottom(), feet);
    }

    void tiltLeansTheHeadAndSparesTheFeet()
    {
        const auto canvas = BuddyCanvas::ofScale(3, 2);
        const BuddyLayout upright({}, canvas);
        const BuddyLayout tilted({ .tilt = 0.02 }, canvas);
        QCOMPARE(cell(tilted, 0, 8).left(), cell(upright, 0, 8).left() - 8);
        QCOMPARE(cell(tilted, 7, 8).left(), cell(upright, 7, 8).left());
    }

    void aSpriteIsPutTogetherFromItsLayers_data()
    {
        QTest::addColumn<Mascot>("mascot");
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<RGB>("expected");
        const RGB claw { 217, 119, 87 };
        QTest::newRow("left claw") << Mascot::skrit << QPoint(0, 3) << claw;
        QTest::newRow("right claw") << Mascot::skrit << QPoint(14, 2) << claw;
        QTest::newRow("eye over the body") << Mascot::mouse << QPoint(4, 2) << RGB { 40, 34, 36 };
        QTest::newRow("second eye, lower corner")
            << Mascot::mouse << QPoint(11, 3) << RGB { 40, 34, 36 };
        QTest::newRow("beside the eye") << Mascot::mouse << QPoint(12, 3) << RGB { 150, 142, 140 };
        QTest::newRow("smile") << Mascot::axolotl << QPoint(9, 4) << RGB { 58, 42, 26 };
        QTest::newRow("foot") << Mascot::axolotl << QPoint(2, 7) << RGB { 186, 126, 50 };
    }
    void aSpriteIsPutTogetherFromItsLayers()
    {
        QFETCH(Mascot, mascot);
        QFETCH(QPoint, at);
        QFETCH(RGB, expected);
        std::vector<RGB> found;
        for (const auto& run : BuddyBitmap::standing(MascotSprite::sprite(mascot)).runs) {
            if (run.row == at.y() && run.col <= at.x() && at.x() < run.col + run.length)
                found.push_back(run.rgb);
        }
        QCOMPARE(found, std::vector { expected });
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyLayoutTest)
#include "BuddyLayoutTest.moc"
