#include "PobblewigDesktop/controls/Theme.h"

#include <QTest>

namespace pobblewig {

class ThemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everythingCanBeRead_data()
    {
        QTest::addColumn<Palette>("palette");
        for (const auto& accent : Theme::accentIDs()) {
            const auto name = accent.toStdString();
            QTest::addRow("light %s", name.c_str()) << Theme::palette(ColorScheme::light, accent);
            QTest::addRow("dark %s", name.c_str()) << Theme::palette(ColorScheme::dark, accent);
        }
    }
    void everythingCanBeRead()
    {
        QFETCH(Palette, palette);
        constexpr auto forText = 4.5;
        constexpr auto forControls = 3.0;
        const auto check = [](const QColor& color, std::vector<QColor> grounds, double least) {
            for (const auto& ground : grounds) {
                const auto pair = color.name() + QStringLiteral(" on ") + ground.name();
                QVERIFY2(Theme::contrast(color, ground) >= least, qPrintable(pair));
            }
        };
        check(palette.text, { palette.window, palette.surface, palette.bubble, palette.code },
            forText);
        check(palette.link, { palette.window }, forText);
        check(palette.text, { palette.selection, palette.match, palette.currentMatch }, forText);
        check(palette.muted, { palette.window, palette.surface, palette.code }, forText);
        check(palette.danger, { palette.surface }, forText);
        check(palette.onAccent, { palette.accent }, forText);
        check(palette.accent, { palette.window, palette.surface }, forControls);
        check(palette.outline, { palette.window, palette.surface }, forControls);
    }

    void contrastIsThatOfTheStandard()
    {
        QCOMPARE(Theme::contrast(Qt::black, Qt::white), 21.0);
        QVERIFY(qAbs(Theme::contrast(QColor(0x767676), Qt::white) - 4.54) < 0.01);
    }

    void everyAccentIsItsOwnAndAnUnknownOneIsCoral()
    {
        QSet<QRgb> colors;
        for (const auto& accent : Theme::accentIDs())
            colors.insert(Theme::palette(ColorScheme::light, accent).accent.rgb());
        QCOMPARE(colors.size(), 8);
        const auto unknown = Theme::palette(ColorScheme::dark, QStringLiteral("plaid"));
        QCOMPARE(unknown, Theme::palette(ColorScheme::dark, QStringLiteral("coral")));
    }

    void theDesktopDecidesWhenTheUserDoesNot()
    {
        using enum ThemePreference;
        for (const auto scheme : { ColorScheme::light, ColorScheme::dark }) {
            QCOMPARE(Theme::colorScheme(system, scheme), scheme);
            QCOMPARE(Theme::colorScheme(light, scheme), ColorScheme::light);
            QCOMPARE(Theme::colorScheme(dark, scheme), ColorScheme::dark);
            const auto palette = Theme::widgetPalette(Theme::palette(scheme, {}));
            QCOMPARE(Theme::desktopScheme(palette), scheme);
        }
    }
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ThemeTest)
#include "ThemeTest.moc"
