#include "buddy/BuddyPoses.h"

#include <cmath>
#include <numbers>

namespace pobblewig {

namespace {

BuddyPose idle(double time)
{
    const auto breath = std::sin(1.45 * time);
    return {
        .tilt = 0.008 * std::sin(1.1 * time),
        .sx = 1 - 0.012 * breath,
        .sy = 1 + 0.016 * breath,
        .yOff = 0.8 * std::sin(1.25 * time),
    };
}

BuddyPose working(double time)
{
    return { .yOff = std::abs(std::sin(9 * std::numbers::pi * time)) };
}

BuddyPose responding(double time)
{
    const auto breath = std::sin(2.6 * time);
    return {
        .tilt = 0.02 * std::sin(0.9 * time),
        .sx = 1 - 0.015 * breath,
        .sy = 1 + 0.02 * breath,
        .yOff = 1.2 * std::abs(std::sin(2.2 * time)),
    };
}

BuddyPose notify(double elapsed)
{
    const auto shake = std::sin(8 * elapsed);
    const auto stretch = std::abs(shake);
    return {
        .sx = 1 - 0.05 * stretch,
        .sy = 1 + 0.06 * stretch,
        .xOff = 4 * shake,
        .yOff = 3 * stretch,
    };
}

BuddyPose done(double elapsed)
{
    const auto decay = std::exp(-1.2 * elapsed);
    const auto bounce = std::abs(std::sin(9 * elapsed));
    const auto stretch = decay * (2 * bounce - 1);
    return {
        .sx = 1 - 0.09 * stretch,
        .sy = 1 + 0.12 * stretch,
        .yOff = 14 * decay * bounce,
    };
}

} // namespace

BuddyPose BuddyPoses::ofState(BuddyState::Kind state, double time, double elapsed)
{
    switch (state) {
    case BuddyState::Kind::idle:
        return idle(time);
    case BuddyState::Kind::working:
        return working(time);
    case BuddyState::Kind::responding:
        return responding(time);
    case BuddyState::Kind::surprised:
        return { .sx = 0.96, .sy = 1.05 };
    case BuddyState::Kind::notify:
        return notify(elapsed);
    case BuddyState::Kind::done:
        return done(elapsed);
    }
    return {};
}

BuddyPose BuddyPoses::asleep(double time)
{
    const auto breath = std::sin(0.9 * time);
    return { .sx = 1.03 - 0.012 * breath, .sy = 0.9 + 0.03 * breath };
}

BuddyPose BuddyPoses::blended(const BuddyPose& from, const BuddyPose& to, double amount)
{
    const auto between = [amount](double a, double b) { return a + (b - a) * amount; };
    return {
        .tilt = between(from.tilt, to.tilt),
        .sx = between(from.sx, to.sx),
        .sy = between(from.sy, to.sy),
        .xOff = between(from.xOff, to.xOff),
        .yOff = between(from.yOff, to.yOff),
    };
}

} // namespace pobblewig
