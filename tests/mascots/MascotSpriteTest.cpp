#include "mascots/MascotSprite.h"

#include "support/TableRow.h"

namespace pobblewig {

class MascotSpriteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyBitmapIsWholeInEveryColorScheme()
    {
        for (const auto mascot : { Mascot::skrit, Mascot::mouse, Mascot::axolotl }) {
            const auto& sprite = MascotSprite::sprite(mascot);
            expectWhole(sprite);
            if (mascot == Mascot::skrit)
                continue;
            for (const auto& scheme : MascotColorScheme::schemes(mascot))
                expectWhole(sprite.recolored(scheme));
        }
    }

    void aColorSchemeThatDoesNotFitFallsBackToTheFirst_data()
    {
        QTest::addColumn<Mascot>("mascot");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("shown");
        row("fits the mouse", Mascot::mouse, "brown", "Brown");
        row("fits the axolotl", Mascot::axolotl, "lavender", "Lavender");
        row("axolotl's on a mouse", Mascot::mouse, "pink", "Original");
        row("mouse's on an axolotl", Mascot::axolotl, "original", "Golden");
        row("a meme has the mouse's", Mascot::meme, "white", "White");
        row("unknown", Mascot::mouse, "", "Original");
    }
    void aColorSchemeThatDoesNotFitFallsBackToTheFirst()
    {
        QFETCH(Mascot, mascot);
        QFETCH(QString, id);
        QTEST(MascotColorScheme::forID(id, mascot).displayName, "shown");
    }

    void aStoredIdBecomesAMascotAndASprite_data()
    {
        QTest::addColumn<Mascot>("userFacing");
        QTest::addColumn<QString>("spriteID");
        row("mouse", Mascot::mouse, "mouse");
        row("axolotl", Mascot::axolotl, "axolotl");
        row("meme", Mascot::meme, "mouse");
        row("skrit", Mascot::mouse, "skrit");
        row("Axolotl", Mascot::mouse, "mouse");
        row("", Mascot::mouse, "mouse");
    }
    void aStoredIdBecomesAMascotAndASprite()
    {
        const auto id = QString::fromLatin1(QTest::currentDataTag());
        QTEST(userFacingMascot(id), "userFacing");
        QTEST(MascotSprite::forID(id).id, "spriteID");
    }

    void recoloringChangesTheColorsAndTheIdOnly()
    {
        const auto& mouse = MascotSprite::sprite(Mascot::mouse);
        const auto& brown = MascotColorScheme::forID(QStringLiteral("brown"), Mascot::mouse);
        auto recolored = mouse.recolored(brown);
        QCOMPARE(recolored.id, QStringLiteral("mouse.brown"));
        QVERIFY(recolored.palette == brown.palette);
        QVERIFY(recolored.eyeColor == brown.eyeColor);
        QVERIFY(recolored.pawColor == brown.pawColor);
        recolored = recolored.recolored(MascotColorScheme::mouseSchemes().front());
        recolored.id = mouse.id;
        QVERIFY(recolored == mouse);
    }

    void onlyColoredLettersThatShowGiveCells()
    {
        const auto& mouse = MascotSprite::sprite(Mascot::mouse);
        const auto body = mouse.palette.at('B');
        const std::vector<MascotSprite::Cell> expected { { 0, 2, body }, { 0, 3, body },
            { 1, 0, body } };
        QVERIFY(mouse.cells({ "..BB", "BN?." }, mouse.hiddenWithGlasses) == expected);
        QVERIFY(mouse.cells({}).empty());
    }

    void theGlassesTakeThePlaceOfNoseOrSmile()
    {
        for (const auto mascot : { Mascot::mouse, Mascot::axolotl }) {
            const auto& sprite = MascotSprite::sprite(mascot);
            const auto bare = sprite.cells(sprite.body).size();
            const auto covered = sprite.cells(sprite.body, sprite.hiddenWithGlasses).size();
            QCOMPARE(bare - covered, mascot == Mascot::mouse ? 2u : 4u);
        }
    }

private:
    static void expectWhole(const MascotSprite& sprite)
    {
        auto rows = sprite.body;
        QCOMPARE(rows.size(), 6u);
        for (const auto gait :
            { MascotGait::idle, MascotGait::walkA, MascotGait::walkB, MascotGait::walkC }) {
            const auto legs = sprite.legRows(gait);
            QCOMPARE(legs.size(), 2u);
            rows.insert(rows.end(), legs.begin(), legs.end());
        }
        qsizetype letters = 0;
        for (const auto& row : rows) {
            QCOMPARE(row.size(), 16u);
            letters += 16 - std::ranges::count(row, '.');
        }
        QCOMPARE(std::ssize(sprite.cells(rows)), letters);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MascotSpriteTest)
#include "MascotSpriteTest.moc"
