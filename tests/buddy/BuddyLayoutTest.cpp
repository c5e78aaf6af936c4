#include "buddy/BuddyLayout.h"

#include "buddy/BuddyBitmap.h"
#include "buddy/BuddyPaws.h"
#include "buddy/BuddyPoses.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

constexpr RGB mouseBody { 150, 142, 140 };
constexpr RGB mouseNose { 196, 116, 120 };
constexpr RGB mouseEye { 40, 34, 36 };

/// Every block that holds the dot.
std::vector<RGB> at(const BuddyBitmap& bitmap, QPoint dot)
{
    std::vector<RGB> found;
    for (const auto& block : bitmap.blocks) {
        const QRect area(block.col, block.row, block.cols, block.rows);
        if (area.contains(dot))
            found.push_back(block.rgb);
    }
    return found;
}

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
        columns<BuddyCanvas>("canvas");
        row("smallest", BuddyCanvas::ofScale(0.5, 1));
        row("usual", BuddyCanvas::ofScale(1, 1));
        row("between whole pixels", BuddyCanvas::ofScale(1, 1.15));
        row("largest on a fine screen", BuddyCanvas::ofScale(3, 2));
    }
    void aBreathingBuddyStandsFirmAndWhole()
    {
        QFETCH(BuddyCanvas, canvas);
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

    void aStandingSpriteIsPutTogetherFromItsLayers()
    {
        const auto rgb = [](QStringView mascot, QPoint dot) {
            return at(BuddyBitmap::standing(MascotSprite::sprite(*Mascot::find(mascot))), dot);
        };
        QCOMPARE(rgb(u"skrit", { 28, 4 }), (std::vector { RGB { 217, 119, 87 } }));
        QCOMPARE(rgb(u"mouse", { 23, 7 }), std::vector { mouseEye });
        QCOMPARE(rgb(u"mouse", { 24, 7 }), std::vector { mouseBody });
        QCOMPARE(rgb(u"axolotl", { 18, 8 }), (std::vector { RGB { 58, 42, 26 } }));
        QCOMPARE(rgb(u"axolotl", { 4, 15 }), (std::vector { RGB { 186, 126, 50 } }));
    }

    void aLookChangesItsDots_data()
    {
        columns<BitmapKey, QPoint, RGB>("look", "dot", "expected");
        const QPoint besideEye(12, 4);
        const QPoint underEye(8, 8);
        const QPoint nose(14, 8);
        row("open eye", BitmapKey {}, QPoint(8, 4), mouseEye);
        row("closed eye", BitmapKey { .eyeStyle = EyeStyle::closed }, QPoint(8, 4), mouseBody);
        row("straight ahead", BitmapKey {}, besideEye, mouseBody);
        row("to the right", BitmapKey { .dx = 1 }, besideEye, mouseEye);
        row("down", BitmapKey { .dy = 1 }, underEye, mouseEye);
        row("nose", BitmapKey {}, nose, mouseNose);
        row("glasses hide the nose", BitmapKey { .showGlasses = true }, nose, mouseBody);
        row("they begin a row above the eyes", BitmapKey { .showGlasses = true }, QPoint(8, 2),
            mouseEye);
        row("no hair on the feet", BitmapKey {}, QPoint(2, 14), RGB {});
        row("a step", BitmapKey { .gait = MascotGait::walkA }, QPoint(2, 14),
            RGB { 186, 144, 140 });
        row("a paw over the head", BitmapKey { .pawFrame = BuddyPaws::petting }, QPoint(10, -2),
            mixed(mouseBody, { 255, 255, 255 }, 0.15));
    }
    void aLookChangesItsDots()
    {
        QFETCH(BitmapKey, look);
        QFETCH(QPoint, dot);
        QFETCH(RGB, expected);
        const auto bitmap =
            BuddyBitmap::rendered(MascotSprite::sprite(*Mascot::find(u"mouse")), look);
        const auto isEmpty = expected == RGB {};
        QCOMPARE(at(bitmap, dot), isEmpty ? std::vector<RGB>() : std::vector { expected });
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyLayoutTest)
#include "BuddyLayoutTest.moc"
