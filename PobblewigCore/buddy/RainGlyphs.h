#pragma once

#include <array>
#include <cstdint>

/// The characters of the rain, "ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿ0123456789=+*<>", as pixels of our own: no font
/// needs to be installed, and none is loaded.
namespace pobblewig::RainGlyphs {

inline constexpr int count = 30;
inline constexpr int columns = 5;
inline constexpr int rows = 7;

/// Seven rows, the top one first. Each row uses its lower five bits, and the highest of them is on
/// the left.
using Glyph = std::array<std::uint8_t, rows>;

const Glyph& glyph(int index);

} // namespace pobblewig::RainGlyphs
