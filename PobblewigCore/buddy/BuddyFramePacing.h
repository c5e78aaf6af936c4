#pragma once

#include <chrono>

/// How often the buddy is drawn, so that a quiet one costs next to nothing.
namespace pobblewig::BuddyFramePacing {

using Interval = std::chrono::duration<double>;

inline constexpr Interval full { 1.0 / 60 };
inline constexpr Interval idle { 1.0 / 15 };
inline constexpr Interval asleep = idle;
inline constexpr Interval occluded { 1.0 };

struct Input {
    bool isOccluded = false;
    bool isDragging = false;
    bool isMoving = false;
    bool isPetting = false;
    bool hasMeme = false;
    bool hasHearts = false;
    bool isTransitioning = false;
    bool isActiveState = false;
    double sleepAmount = 0;
};

/// Returns the time from one frame to the next. Being out of sight outweighs everything else.
Interval interval(const Input& input);

} // namespace pobblewig::BuddyFramePacing
