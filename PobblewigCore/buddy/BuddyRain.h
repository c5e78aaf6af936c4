#pragma once

#include <array>
#include <vector>

namespace pobblewig {

/// The code that rains behind a working buddy: a drop in each column, on a grid of glyphs. It looks
/// like chance, but the same moment always looks the same.
class BuddyRain {
public:
    static constexpr int columns = 13;
    /// From a fading tail to the bright head.
    static constexpr int levels = 6;

    /// How many rows there are, and how far apart in points.
    struct Grid {
        int rows = 0;
        double rowHeight = 1;
    };

    struct Drop {
        int column = 0;
        int row = 0;
        /// Of RainGlyphs.
        int glyph = 0;
        int level = 0;

        bool operator==(const Drop&) const = default;
    };

    BuddyRain();

    /// Replaces what the vector held by the glyphs that are lit, `time` in seconds.
    void fall(const Grid& grid, double time, std::vector<Drop>& drops) const;

private:
    struct Seed {
        double phase = 0;
        /// Points a second.
        double speed = 0;
        int trail = 0;
    };

    void fall(int column, const Grid& grid, double time, std::vector<Drop>& drops) const;

    std::array<Seed, columns> m_seeds;
};

} // namespace pobblewig
