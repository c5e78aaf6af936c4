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
        frames.emplace_back(BuddyPoses::ofState(BuddyState::Kind::idle, frame / 15.0, 0), canvas);
    return frames;
}

QRect dot(const BuddyLayout& layout, int row, int col)
{
    return layout.rect({ .row = row, .col = col, .rows = 1, .cols = 1, .rgb = {} });
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
            dot(BuddyLayout({}, canvas), 15, 4) | dot(BuddyLayout({}, canvas), 15, 27));
        for (const auto& frame : breathing(canvas)) {
            QCOMPARE(dot(frame, 15, 4).bottomLeft(), feet.bottomLeft());
            QCOMPARE(dot(frame, 15, 27).bottomRight(), feet.bottomRight());
            for (int row = 0; row < BuddyBitmap::rows; ++row) {
                const auto whole = dot(frame, row, 0) | dot(frame, row, 31);
                QVERIFY(area.contains(whole));
                const auto below = row < 15 ? dot(frame, row + 1, 16).top() : area.bottom() + 1;
                QCOMPARE(whole.bottom() + 1, below);
                auto width = 0;
                for (int col = 0; col < BuddyBitmap::columns; ++col)
                    width += dot(frame, row, col).width();
                QCOMPARE(width, whole.width());
            }
        }
    }

    void onlyAHopOfAPointLeavesTheGround()
    {
        const auto canvas = BuddyCanvas::ofScale(1, 2);
        for (const auto& [yOff, feet] :
            { std::pair(0.9, 0), { -0.9, 0 }, { 1.0, 2 }, { 14.0, 28 } }) {
            const BuddyLayout layout({ .yOff = yOff }, canvas);
            QCOMPARE(canvas.size().height() - 1 - dot(layout, 15, 4).bottom(), feet);
        }
    }

    void tiltLeansTheHeadAndSparesTheFeet()
    {
        const auto canvas = BuddyCanvas::ofScale(3, 2);
        const BuddyLayout upright({}, canvas);
        const BuddyLayout tilted({ .tilt = 0.02 }, canvas);
        QCOMPARE(dot(tilted, 0, 16).left(), dot(upright, 0, 16).left() - 8);
        QCOMPARE(dot(tilted, 15, 16).left(), dot(upright, 15, 16).left());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyLayoutTest)
#include "BuddyLayoutTest.moc"
