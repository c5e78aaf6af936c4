#pragma once

#include <array>
#include <cstdint>

/// The characters of the rain, "ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿ0123456789=+*<>", as pixels of our own: no font has
/// to be there, and none is loaded.
namespace pobblewig::RainGlyphs {

inline constexpr int count = 30;
inline constexpr int columns = 5;
inline constexpr int rows = 7;

/// Seven rows, the top one first; of each, the lower five bits, the highest of them on the left.
using Glyph = std::array<std::uint8_t, rows>;

const Glyph& glyph(int index);

} // namespace pobblewig::RainGlyphs
