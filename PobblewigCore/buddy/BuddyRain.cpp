#include "buddy/BuddyRain.h"

#include "buddy/BuddyNoise.h"
#include "buddy/RainGlyphs.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace pobblewig {

namespace {

int glyphAt(int column, int row, double time)
{
    constexpr double changesASecond = 2.5;
    const auto step = std::uint32_t(time * changesASecond + 7 * BuddyNoise::first(column));
    const auto cell = std::uint32_t(column * 131 + row * 17);
    const auto mixed = (cell + step) * 0x9e3779b1u;
    return int((mixed >> 16) % std::uint32_t(RainGlyphs::count));
}

/// The tail fades; so does what has only just come in at the top.
int levelAt(int row, int behindHead, int trail)
{
    constexpr auto brightest = BuddyRain::levels - 1;
    const auto level = behindHead == 0 ? brightest : (brightest - 1) * (trail - behindHead) / trail;
    return std::min(level, row + 1);
}

} // namespace

BuddyRain::BuddyRain()
{
    for (int column = 0; column < columns; ++column) {
        const auto seed = column + 1;
        const auto first = BuddyNoise::first(seed);
        const auto second = BuddyNoise::second(seed);
        m_seeds[size_t(column)] = {
            .phase = first,
            .speed = 55 + 50 * second,
            .trail = 5 + int(5 * BuddyNoise::first(seed + columns)),
        };
    }
}

void BuddyRain::fall(const Grid& grid, double time, std::vector<Drop>& drops) const
{
    drops.clear();
    for (int column = 0; column < columns; ++column)
        fall(column, grid, time, drops);
}

void BuddyRain::fall(int column, const Grid& grid, double time, std::vector<Drop>& drops) const
{
    const auto& seed = m_seeds[size_t(column)];
    const auto cycle = grid.rows + seed.trail;
    const auto fallen = seed.phase * cycle + time * seed.speed / grid.rowHeight;
    const auto head = int(std::fmod(fallen, cycle));
    for (int behind = 0; behind < seed.trail; ++behind) {
        const auto row = head - behind;
        if (row < 0 || row >= grid.rows)
            continue;
        drops.push_back({ .column = column,
            .row = row,
            .glyph = glyphAt(column, row, time),
            .level = levelAt(row, behind, seed.trail) });
    }
}

} // namespace pobblewig
