#pragma once

#include "mascots/MascotSprite.h"

#include <vector>

namespace pobblewig {

/// Neighbouring dots of one colour: a cell of a sprite is two dots wide and two high.
struct BuddyBlock {
    int row = 0;
    int col = 0;
    int rows = 0;
    int cols = 0;
    RGB rgb;

    bool operator==(const BuddyBlock&) const = default;
};

/// A sprite, put together from its layers and ready to be painted: each dot is in at most one
/// block, and no block reaches from one row of cells into the next. Rows above the head are
/// negative.
struct BuddyBitmap {
    static constexpr int dotsPerCell = 2;
    /// In dots.
    static constexpr int columns = 16 * dotsPerCell;
    static constexpr int bodyRows = 6 * dotsPerCell;
    static constexpr int rows = 8 * dotsPerCell;
    /// The part of the body that is visible above a card.
    static constexpr int earRows = 2 * dotsPerCell;

    std::vector<BuddyBlock> blocks;

    /// Body, legs, claws and open eyes, standing still.
    static BuddyBitmap standing(const MascotSprite& sprite);

    /// Everything but the claws.
    static BuddyBitmap rendered(const MascotSprite& sprite, const BitmapKey& key);

    static BuddyBitmap claws(const MascotSprite& sprite);

    /// The ears and legs around a card.
    static BuddyBitmap cardHolder(const MascotSprite& sprite, MascotGait gait);
};

} // namespace pobblewig
