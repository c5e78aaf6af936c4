#pragma once

#include <array>

/// The letters that rise from a sleeper.
namespace pobblewig::BuddySnore {

struct Letter {
    /// Points from the upper right corner of the head, to the right and upwards.
    double x = 0;
    double y = 0;
    /// From 0 to 1.
    double opacity = 0;
    /// An index of PixelArts::letterZ.
    int size = 0;
};

using Letters = std::array<Letter, 3>;

/// The letters rise one after the other. They move in whole steps, as a sleeper is not worth a
/// frame for less.
Letters letters(double time, double sleepAmount);

} // namespace pobblewig::BuddySnore
