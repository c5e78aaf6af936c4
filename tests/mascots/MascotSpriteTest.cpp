#include "mascots/MascotSprite.h"

#include "prompts/SettingInstructions.h"
#include "settings/SettingForms.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

constexpr LetterColor leaf[] { { 'G', { 0, 255, 0 } }, { 'S', {} } };
constexpr LetterColor pond[] { { 'G', { 0, 0, 255 } }, { 'S', {} } };
constexpr MascotColorScheme frogColors[] {
    { QLatin1String("leaf"), QLatin1String("Leaf"), leaf, {}, {} },
    { QLatin1String("pond"), QLatin1String("Pond"), pond, { 1, 2, 3 }, { 4, 5, 6 } },
};
constexpr MascotShape frogShape {
    .id = QLatin1String("frog"), .legLetter = 'G', .eyeCols = {}, .hiddenWithGlasses = "S"
};
constexpr Mascot frog { frogShape.id, QLatin1String("Frog"), Mascot::Offer::userAndAssistant,
    &frogShape, frogColors, frogColors };

} // namespace

class MascotSpriteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyBitmapIsWholeInEveryColorScheme()
    {
        for (const auto& mascot : Mascot::all()) {
            const auto sprite = MascotSprite::sprite(mascot);
            expectWhole(sprite);
            if (mascot.offer == Mascot::Offer::nobody)
                continue;
            for (const auto& scheme : mascot.schemes)
                expectWhole(sprite.recolored(scheme));
        }
    }

    void anEntryIsAllThatAMascotTakes()
    {
        const Mascot mascots[] { Mascot::all().front(), frog };
        QCOMPARE(&Mascot::userFacing(u"frog", mascots), &mascots[1]);
        QCOMPARE(&Mascot::userFacing(u"skrit", mascots), &mascots[1]);
        QCOMPARE(SettingForms::options(mascots).at(0).label, u"Frog"_s);
        QCOMPARE(Prompts::mascotIDs(mascots), QStringList(frog.id));
        QCOMPARE(Prompts::mascotColors(u"/", mascots), u"frog: leaf/pond"_s);
        const auto& colors = MascotColorScheme::forID(u"pond", frog);
        const auto sprite = MascotSprite::sprite(frog).recolored(colors);
        QCOMPARE(sprite.id, u"frog.pond"_s);
        QVERIFY(sprite.eyeColor == colors.eyeColor && sprite.pawColor == colors.pawColor);
        QVERIFY(sprite.legRows(MascotGait::walkC)[1] == "..GGGG....GGGG..");
        // Neither what the glasses hide nor what has no colour.
        const std::vector<MascotSprite::Cell> expected { { 0, 1, { 0, 0, 255 } } };
        QVERIFY(sprite.cells({ ".G?S" }, sprite.hiddenWithGlasses) == expected);
    }

    void aStoredIdBecomesASprite_data()
    {
        columns<QString, QString, QString>("sprite", "chosen", "colors");
        row("axolotl", "axolotl", "axolotl", "Golden");
        row("meme", "mouse", "meme", "White");
        row("skrit", "skrit", "mouse", "White");
        row("Axolotl", "mouse", "mouse", "White");
    }
    void aStoredIdBecomesASprite()
    {
        const auto id = QString::fromLatin1(QTest::currentDataTag());
        const auto& mascot = Mascot::userFacing(id);
        QTEST(MascotSprite::forID(id).id, "sprite");
        QTEST(QString(mascot.id), "chosen");
        QTEST(QString(MascotColorScheme::forID(u"white", mascot).displayName), "colors");
    }

private:
    static void expectWhole(const MascotSprite& sprite)
    {
        auto rows = sprite.body;
        for (const auto& [gait, legs] : sprite.legs)
            rows.insert(rows.end(), legs.begin(), legs.end());
        QCOMPARE(rows.size(), 14u);
        qsizetype blanks = 0;
        for (const auto& row : rows) {
            QCOMPARE(row.size(), 16u);
            blanks += std::ranges::count(row, '.');
        }
        QCOMPARE(std::ssize(sprite.cells(rows)), 14 * 16 - blanks);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MascotSpriteTest)
#include "MascotSpriteTest.moc"
