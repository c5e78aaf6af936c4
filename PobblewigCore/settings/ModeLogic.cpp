#include "settings/ModeLogic.h"

#include <algorithm>

namespace pobblewig {

using namespace std::chrono_literals;

std::chrono::minutes ModeLogic::clampedDuration(int minutes)
{
    constexpr std::chrono::minutes week = std::chrono::days(7);
    return std::clamp(std::chrono::minutes(minutes), 1min, week);
}

std::optional<std::chrono::milliseconds> ModeLogic::remainingTime(
    const AppSettings& settings, TimePoint now)
{
    if (!settings.modeRevertAt)
        return std::nullopt;
    return std::max(*settings.modeRevertAt - now, 0ms);
}

std::chrono::milliseconds ModeLogic::untilNextLook(std::chrono::milliseconds remaining)
{
    return std::min<std::chrono::milliseconds>(remaining, 1min);
}

} // namespace pobblewig
