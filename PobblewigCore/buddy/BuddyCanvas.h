#pragma once

#include <QSize>

namespace pobblewig {

/// Cells beyond those that the buddy itself always has: on each side, and above.
struct BuddyRoom {
    int beside = 0;
    int above = 0;

    /// Returns enough room for both.
    BuddyRoom united(const BuddyRoom& other) const;

    bool operator==(const BuddyRoom&) const = default;
};

/// The area that the buddy is drawn in, in device pixels. The buddy stands in the middle of the
/// lower edge, which is the ground; beside and above the sprite there is room for every pose.
struct BuddyCanvas {
    /// The side of a cell at the scale 1.
    static constexpr double pointsPerCell = 8;
    static constexpr int cellsAround = 1;
    static constexpr int cellsAbove = 3;

    int cell = 0;
    BuddyRoom room;

    static BuddyCanvas ofScale(double sizeScale, double devicePixelRatio);

    QSize size() const;

    /// Returns the device pixels for this many points at the scale 1.
    int pixels(double points) const;

    /// The side of a dot in the drawings around the buddy: half a cell.
    int dot() const;

    bool operator==(const BuddyCanvas&) const = default;
};

} // namespace pobblewig
