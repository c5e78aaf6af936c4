#pragma once

#include "PobblewigDesktop/controls/Theme.h"

/// The colours of what a chart compares. They differ in lightness too, and each is seen on the
/// surface.
namespace pobblewig::ChartColors {

inline constexpr int count = 6;

/// `number` counts from 0 to `count` - 1.
QColor color(int number, ColorScheme scheme);

} // namespace pobblewig::ChartColors
