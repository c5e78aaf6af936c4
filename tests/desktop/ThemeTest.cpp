#include "PobblewigDesktop/Theme.h"

#include <QTest>

namespace pobblewig {

class ThemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everythingCanBeRead_data()
    {
        QTest::addColumn<Palette>("palette");
        for (const auto scheme : { ColorScheme::light, ColorScheme::dark }) {
            const auto* name = scheme == ColorScheme::light ? "light" : "dark";
            for (const auto& accent : Theme::accentIDs())
                QTest::addRow("%s %s", name, qPrintable(accent)) << Theme::palette(scheme, accent);
        }
    }
    void everythingCanBeRead()
    {
        QFETCH(Palette, palette);
        constexpr auto forText = 4.5;
        constexpr auto forControls = 3.0;
        const std::tuple<const char*, QColor, QColor, double> pairs[] = {
            { "text", palette.text, palette.window, forText },
            { "text on a surface", palette.text, palette.surface, forText },
            { "text in a bubble", palette.text, palette.bubble, forText },
            { "selected text", palette.text, palette.selection, forText },
            { "found text", palette.text, palette.match, forText },
            { "the current match", palette.text, palette.currentMatch, forText },
            { "muted text", palette.muted, palette.window, forText },
            { "muted text on a surface", palette.muted, palette.surface, forText },
            { "an error", palette.danger, palette.surface, forText },
            { "text on the accent", palette.onAccent, palette.accent, forText },
            { "the accent", palette.accent, palette.window, forControls },
            { "the accent on a surface", palette.accent, palette.surface, forControls },
            { "the edge of a control", palette.outline, palette.window, forControls },
            { "its inner edge", palette.outline, palette.surface, forControls },
        };
        for (const auto& [what, color, ground, least] : pairs) {
            const auto contrast = Theme::contrast(color, ground);
            QVERIFY2(contrast >= least,
                qPrintable(QStringLiteral("%1: %2").arg(QLatin1String(what)).arg(contrast)));
        }
    }

    void contrastIsThatOfTheStandard()
    {
        QCOMPARE(Theme::contrast(Qt::black, Qt::white), 21.0);
        QCOMPARE(Theme::contrast(Qt::white, Qt::white), 1.0);
        QVERIFY(qAbs(Theme::contrast(QColor(0x767676), Qt::white) - 4.54) < 0.01);
    }

    void everyAccentIsItsOwn()
    {
        QCOMPARE(Theme::accentIDs().size(), 8);
        QSet<QRgb> colors;
        for (const auto& accent : Theme::accentIDs())
            colors.insert(Theme::palette(ColorScheme::light, accent).accent.rgb());
        QCOMPARE(colors.size(), 8);
    }

    void anUnknownAccentShowsAsCoral()
    {
        const auto unknown = Theme::palette(ColorScheme::dark, QStringLiteral("plaid"));
        QCOMPARE(unknown, Theme::palette(ColorScheme::dark, QStringLiteral("coral")));
    }

    void theDesktopDecidesWhenTheUserDoesNot()
    {
        using enum ThemePreference;
        QCOMPARE(Theme::colorScheme(system, ColorScheme::dark), ColorScheme::dark);
        QCOMPARE(Theme::colorScheme(light, ColorScheme::dark), ColorScheme::light);
        QCOMPARE(Theme::colorScheme(dark, ColorScheme::light), ColorScheme::dark);
        for (const auto scheme : { ColorScheme::light, ColorScheme::dark })
            QCOMPARE(
                Theme::desktopScheme(Theme::widgetPalette(Theme::palette(scheme, {}))), scheme);
    }
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ThemeTest)
#include "ThemeTest.moc"
