#pragma once

/// Values that follow their target softly, the same at every frame rate.
namespace pobblewig::BuddySmoothing {

/// How many frames of a sixtieth of a second have passed. A long stall counts as a short one, so
/// that nothing jumps when the program comes back.
double frames(double seconds);

/// The next value on the way to the target; of the distance, each frame leaves the part `kept`.
/// What can no longer be told from the target is the target.
double approached(double value, double target, double kept, double frames);

/// From 0 to 1 with a soft start and a soft end.
double eased(double amount);

} // namespace pobblewig::BuddySmoothing
