#pragma once

#include "buddy/BuddyPose.h"
#include "buddy/BuddyState.h"

/// The poses over time, in seconds.
namespace pobblewig::BuddyPoses {

/// `time` since the buddy came up, `elapsed` since it is in that state.
BuddyPose ofState(BuddyState::Kind state, double time, double elapsed);

/// Sunk down, breathing deep and slow.
BuddyPose asleep(double time);

/// From one pose (at 0) to the other (at 1).
BuddyPose blended(const BuddyPose& from, const BuddyPose& to, double amount);

} // namespace pobblewig::BuddyPoses
