#include "buddy/BuddyEyes.h"

#include "buddy/BuddyNoise.h"

#include <cmath>

namespace pobblewig {

bool BuddyEyes::isBlinking(double time)
{
    constexpr double period = 4.2;
    constexpr double length = 0.15;
    const auto turn = std::floor(time / period);
    const auto start = 0.5 + (period - 1.5) * BuddyNoise::first(turn);
    const auto since = time - turn * period - start;
    const auto isTwice = BuddyNoise::second(turn) < 0.25;
    const auto isWithin = [&](double from) { return since >= from && since < from + length; };
    return isWithin(0) || (isTwice && isWithin(2 * length));
}

EyeStyle BuddyEyes::style(BuddyState::Kind state, double elapsed)
{
    constexpr double startled = 0.6;
    switch (state) {
    case BuddyState::Kind::surprised:
        return EyeStyle::wide;
    case BuddyState::Kind::notify:
        return elapsed < startled ? EyeStyle::wide : EyeStyle::normal;
    case BuddyState::Kind::done:
        return EyeStyle::happy;
    default:
        return EyeStyle::normal;
    }
}

QPoint BuddyEyes::look(QPointF pointer, QSizeF view)
{
    const auto towards = [](double at, double length) {
        constexpr double tolerance = 8;
        const auto fromMiddle = at - length / 2;
        return fromMiddle < -tolerance ? -1 : fromMiddle > tolerance ? 1 : 0;
    };
    return { towards(pointer.x(), view.width()), towards(pointer.y(), view.height()) };
}

int BuddyEyes::reading(double elapsed)
{
    constexpr double lineInSeconds = 1.5;
    return int(std::fmod(elapsed, lineInSeconds) / lineInSeconds * 3) - 1;
}

} // namespace pobblewig
