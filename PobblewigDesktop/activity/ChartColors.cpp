#include "PobblewigDesktop/activity/ChartColors.h"

#include <array>

namespace pobblewig {

namespace {

struct Pair {
    QRgb light;
    QRgb dark;
};

/// In the order of the categories of applications.
constexpr std::array<Pair, ChartColors::count> colors { {
    { 0xCF5238, 0xF4A78F },
    { 0x8A3A86, 0xCF8FCD },
    { 0x24386B, 0x8494DC },
    { 0xC08A18, 0xF8E3A8 },
    { 0x15594E, 0x8ADBC8 },
    { 0x736A64, 0x857A74 },
} };

} // namespace

QColor ChartColors::color(int number, ColorScheme scheme)
{
    const auto& pair = colors.at(size_t(number));
    return scheme == ColorScheme::light ? pair.light : pair.dark;
}

} // namespace pobblewig
