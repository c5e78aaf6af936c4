#pragma once

#include "buddy/BuddyPose.h"

/// The poses over time, in seconds since the buddy came up.
namespace pobblewig::BuddyPoses {

/// Breathes slowly and sways a little.
BuddyPose idle(double time);

} // namespace pobblewig::BuddyPoses
