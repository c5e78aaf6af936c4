#pragma once

#include "buddy/BuddyBitmap.h"
#include "buddy/BuddyPose.h"

#include <QRect>

#include <array>

namespace pobblewig {

/// The area that the buddy is drawn in, in device pixels. The ground is its lower edge; beside and
/// above the sprite there is room for every pose.
struct BuddyCanvas {
    /// The side of a cell at the scale 1.
    static constexpr double pointsPerCell = 8;
    static constexpr int cellsAround = 1;
    static constexpr int cellsAbove = 3;

    int cell = 0;

    static BuddyCanvas ofScale(double sizeScale, double devicePixelRatio);

    QSize size() const;

    bool operator==(const BuddyCanvas&) const = default;
};

/// Where a pose puts each cell, in whole device pixels: cells touch without gaps, and two poses
/// that cannot be told apart on the screen are equal.
///
/// The feet stand still while the body breathes; they leave the ground only in a pose that is at
/// least a point above it.
class BuddyLayout {
public:
    BuddyLayout() = default;
    BuddyLayout(const BuddyPose& pose, const BuddyCanvas& canvas);

    QRect rect(const BuddyRun& run) const;

    bool operator==(const BuddyLayout&) const = default;

private:
    using Columns = std::array<int, BuddyBitmap::columns + 1>;

    Columns m_bodyColumns {};
    Columns m_legColumns {};
    /// The upper edge of each row, and the lower edge of the last.
    std::array<int, BuddyBitmap::rows + 1> m_rows {};
    /// How far the tilt shifts each row.
    std::array<int, BuddyBitmap::rows> m_leans {};
};

} // namespace pobblewig
