#pragma once

#include "buddy/BuddyPose.h"
#include "buddy/BuddyState.h"

/// The poses over time, in seconds.
namespace pobblewig::BuddyPoses {

/// `time` counts from the buddy's first appearance, `elapsed` from the beginning of the state.
BuddyPose ofState(BuddyState::Kind state, double time, double elapsed);

/// Sunk down, breathing deeply and slowly.
BuddyPose asleep(double time);

/// From one pose (at 0) to the other (at 1).
BuddyPose blended(const BuddyPose& from, const BuddyPose& to, double amount);

} // namespace pobblewig::BuddyPoses
