#include "buddy/BuddyBitmap.h"

#include "buddy/BuddyPaws.h"
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

} // namespace

class BuddyBitmapTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aStandingSpriteIsPutTogetherFromItsLayers_data()
    {
        QTest::addColumn<QString>("mascot");
        QTest::addColumn<QPoint>("dot");
        QTest::addColumn<RGB>("expected");
        row("claw", "skrit", QPoint(28, 4), RGB { 217, 119, 87 });
        row("eye over the body", "mouse", QPoint(23, 7), mouseEye);
        row("beside the eye", "mouse", QPoint(24, 7), mouseBody);
        row("smile", "axolotl", QPoint(18, 8), RGB { 58, 42, 26 });
        row("foot", "axolotl", QPoint(4, 15), RGB { 186, 126, 50 });
    }
    void aStandingSpriteIsPutTogetherFromItsLayers()
    {
        QFETCH(QString, mascot);
        QFETCH(QPoint, dot);
        QFETCH(RGB, expected);
        const auto bitmap = BuddyBitmap::standing(MascotSprite::forID(mascot));
        QCOMPARE(at(bitmap, dot), std::vector { expected });
    }

    void aLookChangesItsDots_data()
    {
        QTest::addColumn<BitmapKey>("look");
        QTest::addColumn<QPoint>("dot");
        QTest::addColumn<RGB>("expected");
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
        const auto bitmap = BuddyBitmap::rendered(MascotSprite::forID(u"mouse"), look);
        const auto isEmpty = expected == RGB {};
        QCOMPARE(at(bitmap, dot), isEmpty ? std::vector<RGB>() : std::vector { expected });
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyBitmapTest)
#include "BuddyBitmapTest.moc"
