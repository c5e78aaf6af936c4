#pragma once

#include "mascots/MascotSprite.h"

#include <span>
#include <string_view>

namespace pobblewig {

/// A small drawing, written in letters: "X" is the colour of the thing, "O" its outline or shadow,
/// "W" a light, and "." nothing.
struct PixelArt {
    std::span<const std::string_view> rows;

    int width() const { return int(rows.front().size()); }
    int height() const { return int(rows.size()); }
};

/// The things that the buddy wears and those that are drawn around it, in dots.
namespace PixelArts {

PixelArt eye(EyeStyle style);

/// Glasses for one eye: the glass, and the rim around it.
PixelArt lens();
PixelArt rim();

PixelArt laptop();
PixelArt typingPaw();

/// The hand that pets.
PixelArt paw();

inline constexpr int letterSizes = 3;

PixelArt heart(bool isLarge);

/// The letter of a sleeper; 0 is the smallest.
PixelArt letterZ(int size);

PixelArt reminderMark();
PixelArt doneMark();

} // namespace PixelArts

} // namespace pobblewig
