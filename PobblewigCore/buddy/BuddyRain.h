#pragma once

#include <array>
#include <vector>

namespace pobblewig {

/// The code that rains behind a working buddy: a drop in each column, on a grid of glyphs. It looks
/// random, but the same moment always looks the same.
class BuddyRain {
public:
    static constexpr int columns = 13;
    /// From the fading tail to the bright head.
    static constexpr int levels = 6;

    /// The number of rows, and the distance between them in points.
    struct Grid {
        int rows = 0;
        double rowHeight = 1;
    };

    struct Drop {
        int column = 0;
        int row = 0;
        /// An index into RainGlyphs.
        int glyph = 0;
        int level = 0;

        bool operator==(const Drop&) const = default;
    };

    BuddyRain();

    /// Replaces the drops with the glyphs that are lit at `time`, in seconds.
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
