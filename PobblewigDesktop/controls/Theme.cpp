#include "PobblewigDesktop/controls/Theme.h"

#include "foundation/EnumNames.h"
#include "settings/AccentChoice.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pobblewig {

namespace {

struct Accent {
    AccentChoice choice;
    QRgb light;
    QRgb dark;
};

constexpr auto accents = std::to_array<Accent>({
    { AccentChoice::coral, 0xD9593D, 0xF08A6F },
    { AccentChoice::amber, 0x9A6100, 0xE5A83B },
    { AccentChoice::moss, 0x5E7A2E, 0xA3BF6B },
    { AccentChoice::teal, 0x1F7F7A, 0x5CBFB8 },
    { AccentChoice::sky, 0x2F75B5, 0x74B3E8 },
    { AccentChoice::violet, 0x7A5CC0, 0xB09AEA },
    { AccentChoice::rose, 0xC2447A, 0xEE8FB4 },
    { AccentChoice::graphite, 0x5F5854, 0xBDB3AC },
});
static_assert(EnumNames::name(AccentChoice(accents.size())).empty());

Palette neutral(ColorScheme scheme)
{
    if (scheme == ColorScheme::light)
        return { .scheme = scheme,
            .window = 0xFBF8F4,
            .surface = 0xFFFFFF,
            .text = 0x2B2523,
            .muted = 0x756B66,
            .hairline = 0xE9E2DB,
            .outline = 0x8F847D,
            .danger = 0xB3261E,
            .code = 0xF5F0EA,
            .match = 0xFFE9A8,
            .currentMatch = 0xFFC24D };
    return { .scheme = scheme,
        .window = 0x1E1B1A,
        .surface = 0x282423,
        .text = 0xEFE9E4,
        .muted = 0xA79E98,
        .hairline = 0x3A3432,
        .outline = 0x7F7671,
        .danger = 0xFFB4AB,
        .code = 0x2A2625,
        .match = 0x544619,
        .currentMatch = 0x7D5B00 };
}

QColor mixed(const QColor& color, double share, const QColor& ground)
{
    const auto channel = [share](int over, int under) {
        return static_cast<int>(std::lround(share * over + (1 - share) * under));
    };
    return { channel(color.red(), ground.red()), channel(color.green(), ground.green()),
        channel(color.blue(), ground.blue()) };
}

double luminance(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

QColor moreReadable(const QColor& ground, const QColor& one, const QColor& other)
{
    return Theme::contrast(one, ground) >= Theme::contrast(other, ground) ? one : other;
}

/// The accent, with as much of the text's colour as it takes to be read as text.
QColor linkColor(const Palette& palette)
{
    constexpr double forText = 4.5;
    auto link = palette.accent;
    for (auto share = 0.1; Theme::contrast(link, palette.window) < forText; share += 0.1)
        link = mixed(palette.text, share, palette.accent);
    return link;
}

} // namespace

QStringList Theme::accentIDs()
{
    QStringList ids;
    for (const auto& accent : accents)
        ids.append(EnumNames::text(accent.choice));
    return ids;
}

Palette Theme::palette(ColorScheme scheme, const QString& accentID)
{
    auto palette = neutral(scheme);
    const auto& accent = *std::ranges::find(accents, accentChoice(accentID), &Accent::choice);
    palette.accent = scheme == ColorScheme::light ? accent.light : accent.dark;
    palette.onAccent = moreReadable(palette.accent, QColor(0xFFFFFF), QColor(0x17110F));
    palette.link = linkColor(palette);
    palette.bubble = mixed(palette.accent, 0.14, palette.window);
    palette.selection = mixed(palette.accent, 0.34, palette.window);
    return palette;
}

ColorScheme Theme::colorScheme(ThemePreference preference, ColorScheme desktop)
{
    switch (preference) {
    case ThemePreference::light:
        return ColorScheme::light;
    case ThemePreference::dark:
        return ColorScheme::dark;
    case ThemePreference::system:
        break;
    }
    return desktop;
}

ColorScheme Theme::desktopScheme(const QPalette& applicationPalette)
{
    const auto window = luminance(applicationPalette.color(QPalette::Window));
    const auto text = luminance(applicationPalette.color(QPalette::WindowText));
    return window < text ? ColorScheme::dark : ColorScheme::light;
}

double Theme::contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({ luminance(one), luminance(other) });
    return (lighter + 0.05) / (darker + 0.05);
}

QPalette Theme::widgetPalette(const Palette& palette)
{
    QPalette result;
    const std::pair<QPalette::ColorRole, QColor> roles[] = {
        { QPalette::Window, palette.window },
        { QPalette::WindowText, palette.text },
        { QPalette::Base, palette.surface },
        { QPalette::AlternateBase, palette.window },
        { QPalette::Text, palette.text },
        { QPalette::PlaceholderText, palette.muted },
        { QPalette::Button, palette.surface },
        { QPalette::ButtonText, palette.text },
        { QPalette::ToolTipBase, palette.surface },
        { QPalette::ToolTipText, palette.text },
        { QPalette::Highlight, palette.selection },
        { QPalette::HighlightedText, palette.text },
        { QPalette::Link, palette.accent },
    };
    for (const auto& [role, color] : roles)
        result.setColor(role, color);
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
        result.setColor(QPalette::Disabled, role, palette.muted);
    return result;
}

} // namespace pobblewig
