#pragma once

namespace pobblewig {

/// How the buddy holds itself at a moment.
struct BuddyPose {
    /// Radians, counter-clockwise.
    double tilt = 0;
    double sx = 1;
    double sy = 1;
    /// Points to the right.
    double xOff = 0;
    /// Points upwards.
    double yOff = 0;

    bool operator==(const BuddyPose&) const = default;
};

} // namespace pobblewig
