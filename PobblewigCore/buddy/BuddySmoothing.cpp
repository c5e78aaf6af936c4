#include "buddy/BuddySmoothing.h"

#include <algorithm>
#include <cmath>

namespace pobblewig {

double BuddySmoothing::frames(double seconds)
{
    constexpr double longest = 0.25;
    return std::clamp(seconds, 0.0, longest) * 60;
}

double BuddySmoothing::approached(double value, double target, double kept, double frames)
{
    constexpr double indistinguishable = 0.0005;
    const auto next = value + (target - value) * (1 - std::pow(kept, frames));
    return std::abs(target - next) < indistinguishable ? target : next;
}

double BuddySmoothing::eased(double amount)
{
    const auto x = std::clamp(amount, 0.0, 1.0);
    return x * x * (3 - 2 * x);
}

} // namespace pobblewig
