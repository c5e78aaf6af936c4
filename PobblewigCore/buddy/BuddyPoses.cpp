#include "buddy/BuddyPoses.h"

#include <cmath>

namespace pobblewig {

BuddyPose BuddyPoses::idle(double time)
{
    const auto breath = std::sin(1.45 * time);
    return {
        .tilt = 0.008 * std::sin(1.1 * time),
        .sx = 1 - 0.012 * breath,
        .sy = 1 + 0.016 * breath,
        .yOff = 0.8 * std::sin(1.25 * time),
    };
}

} // namespace pobblewig
