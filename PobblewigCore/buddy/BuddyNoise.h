#pragma once

/// What looks like chance but is the same each time.
namespace pobblewig::BuddyNoise {

/// Two unrelated numbers from 0 up to 1 for each seed.
double first(double seed);
double second(double seed);

} // namespace pobblewig::BuddyNoise
