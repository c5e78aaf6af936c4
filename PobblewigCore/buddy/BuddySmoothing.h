#pragma once

/// Lets values follow their target smoothly, in the same way at every frame rate.
namespace pobblewig::BuddySmoothing {

/// Returns how many frames of a sixtieth of a second have passed. A long stall counts as a short
/// one, so that nothing jumps when the program resumes.
double frames(double seconds);

/// Returns the next value on the way to the target: each frame leaves the part `kept` of the
/// distance. A value that can no longer be told from the target becomes the target.
double approached(double value, double target, double kept, double frames);

/// Returns an amount from 0 to 1 with a soft start and a soft end.
double eased(double amount);

} // namespace pobblewig::BuddySmoothing
