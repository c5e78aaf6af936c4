#include "mascots/MascotSprite.h"

#include "support/TableRow.h"

namespace pobblewig {

class MascotSpriteTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyBitmapIsWholeInEveryColorScheme()
    {
        expectWhole(MascotSprite::sprite(Mascot::skrit));
        for (const auto mascot : { Mascot::mouse, Mascot::axolotl }) {
            for (const auto& scheme : MascotColorScheme::schemes(mascot)) {
                const auto sprite = MascotSprite::sprite(mascot).recolored(scheme);
                QVERIFY(sprite.palette == scheme.palette && sprite.eyeColor == scheme.eyeColor);
                expectWhole(sprite);
            }
        }
    }

    void aColorSchemeThatDoesNotFitFallsBackToTheFirst()
    {
        const auto shown = [](Mascot mascot, const QString& id) {
            return MascotColorScheme::forID(id, mascot).displayName;
        };
        QCOMPARE(shown(Mascot::meme, QStringLiteral("white")), u"White");
        QCOMPARE(shown(Mascot::mouse, QStringLiteral("pink")), u"Original");
        QCOMPARE(shown(Mascot::axolotl, QStringLiteral("original")), u"Golden");
    }

    void aStoredIdBecomesASprite_data()
    {
        QTest::addColumn<QString>("sprite");
        row("axolotl", "axolotl");
        row("meme", "mouse");
        row("skrit", "skrit");
        row("Axolotl", "mouse");
    }
    void aStoredIdBecomesASprite()
    {
        QTEST(MascotSprite::forID(QString::fromLatin1(QTest::currentDataTag())).id, "sprite");
    }

    void hiddenAndUnknownLettersGiveNoCells()
    {
        const auto& mouse = MascotSprite::sprite(Mascot::mouse);
        const std::vector<MascotSprite::Cell> expected { { 1, 2, mouse.palette.at('B') } };
        QVERIFY(mouse.cells({ ".N..", "?.B." }, mouse.hiddenWithGlasses) == expected);
    }

private:
    static void expectWhole(const MascotSprite& sprite)
    {
        auto rows = sprite.body;
        for (const auto gait :
            { MascotGait::idle, MascotGait::walkA, MascotGait::walkB, MascotGait::walkC }) {
            const auto legs = sprite.legRows(gait);
            rows.insert(rows.end(), legs.begin(), legs.end());
        }
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
