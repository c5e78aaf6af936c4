#pragma once

#include "mascots/MascotSprite.h"

#include <vector>

namespace pobblewig {

/// Neighbouring cells of one colour in a row.
struct BuddyRun {
    int row = 0;
    int col = 0;
    int length = 0;
    RGB rgb;

    bool operator==(const BuddyRun&) const = default;
};

/// A sprite put together from its layers and ready to be painted: each cell is in one run at most.
struct BuddyBitmap {
    static constexpr int columns = 16;
    static constexpr int bodyRows = 6;
    static constexpr int rows = 8;

    std::vector<BuddyRun> runs;

    /// Body, legs, claws and open eyes, standing still.
    static BuddyBitmap standing(const MascotSprite& sprite);
};

} // namespace pobblewig
