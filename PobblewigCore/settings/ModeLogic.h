#pragma once

#include "settings/AppSettings.h"

/// Rules for temporary modes. A temporary mode always reverts to the open-ended mode, never to the
/// previous one.
namespace pobblewig::ModeLogic {

/// Clamps to between one minute and a week.
std::chrono::minutes clampedDuration(int minutes);

/// The remaining time of a temporary mode: nothing if none is active, zero if its time is over.
std::optional<std::chrono::milliseconds> remainingTime(const AppSettings& settings, TimePoint now);

/// How long to wait before the clock is read again. A minute at most, since timers stop while the
/// computer sleeps.
std::chrono::milliseconds untilNextLook(std::chrono::milliseconds remaining);

} // namespace pobblewig::ModeLogic
