#pragma once

/// Numbers that look random but are the same each time.
namespace pobblewig::BuddyNoise {

/// Two unrelated numbers for each seed, at least 0 and below 1.
double first(double seed);
double second(double seed);

} // namespace pobblewig::BuddyNoise
