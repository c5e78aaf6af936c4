#include "buddy/BuddySnore.h"

#include "buddy/BuddySleep.h"
#include "buddy/PixelArt.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pobblewig {

namespace {

/// `way` from 0 at the head to 1 at the end of the room.
BuddySnore::Letter letterAt(double way, double sleepAmount)
{
    constexpr double height = 118;
    constexpr double appearing = 0.1;
    constexpr double fading = 0.3;
    const auto comes = std::min(1.0, way / appearing);
    const auto goes = std::min(1.0, (1 - way) / fading);
    return {
        .x = -14 + 26 * way + 6 * std::sin(3 * std::numbers::pi * way),
        .y = height * way,
        .opacity = sleepAmount * comes * goes,
        .size = int(way * PixelArts::letterSizes),
    };
}

} // namespace

BuddySnore::Letters BuddySnore::letters(double time, double sleepAmount)
{
    constexpr double wayInSeconds = 6;
    const auto stepped = std::floor(time / BuddySleep::beat) * BuddySleep::beat;
    Letters letters;
    for (size_t i = 0; i < letters.size(); ++i) {
        const auto turns = stepped / wayInSeconds + double(i) / double(letters.size());
        letters[i] = letterAt(turns - std::floor(turns), sleepAmount);
    }
    return letters;
}

} // namespace pobblewig
