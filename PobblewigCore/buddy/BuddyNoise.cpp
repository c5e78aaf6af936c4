#include "buddy/BuddyNoise.h"

#include <cmath>

namespace pobblewig {

namespace {

double fraction(double value)
{
    return value - std::floor(value);
}

} // namespace

double BuddyNoise::first(double seed)
{
    return fraction(std::sin(12.9898 * seed) * 43758.5453);
}

double BuddyNoise::second(double seed)
{
    return fraction(std::sin(78.233 * seed) * 12543.123);
}

} // namespace pobblewig
