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
        frames.emplace_back(BuddyPoses::ofState({}, frame / 15.0, 0), canvas);
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
        const QRect feet(
            cell(BuddyLayout({}, canvas), 7, 2) | cell(BuddyLayout({}, canvas), 7, 13));
        for (const auto& frame : breathing(canvas)) {
            QCOMPARE(cell(frame, 7, 2).bottomLeft(), feet.bottomLeft());
            QCOMPARE(cell(frame, 7, 13).bottomRight(), feet.bottomRight());
            for (int row = 0; row < BuddyBitmap::rows; ++row) {
                const auto whole = cell(frame, row, 0) | cell(frame, row, 15);
                QVERIFY(area.contains(whole));
                const auto below = row < 7 ? cell(frame, row + 1, 8).top() : area.bottom() + 1;
                QCOMPARE(whole.bottom() + 1, below);
                auto width = 0;
                for (int col = 0; col < BuddyBitmap::columns; ++col)
                    width += cell(frame, row, col).width();
                QCOMPARE(width, whole.width());
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

    void onlyAHopOfAPointLeavesTheGround()
    {
        const auto canvas = BuddyCanvas::ofScale(1, 2);
        for (const auto& [yOff, feet] :
            { std::pair(0.9, 0), { -0.9, 0 }, { 1.0, 2 }, { 14.0, 28 } }) {
            const BuddyLayout layout({ .yOff = yOff }, canvas);
            QCOMPARE(canvas.size().height() - 1 - cell(layout, 7, 2).bottom(), feet);
        }
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
        const auto row = [](const char* name, Mascot mascot, QPoint at, RGB expected) {
            QTest::newRow(name) << mascot << at << expected;
        };
        row("claw", Mascot::skrit, { 14, 2 }, { 217, 119, 87 });
        row("eye over the body", Mascot::mouse, { 11, 3 }, { 40, 34, 36 });
        row("beside the eye", Mascot::mouse, { 12, 3 }, { 150, 142, 140 });
        row("smile", Mascot::axolotl, { 9, 4 }, { 58, 42, 26 });
        row("foot", Mascot::axolotl, { 2, 7 }, { 186, 126, 50 });
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
