#pragma once

#include "settings/AppSettings.h"

/// What becomes of a temporary mode. It always falls back to the open-ended mode, never to the one
/// before it.
namespace pobblewig::ModeLogic {

/// From one minute to a week.
std::chrono::minutes clampedDuration(int minutes);

/// How long a temporary mode still lasts: nothing if none is running, zero if its time is over.
std::optional<std::chrono::milliseconds> remainingTime(const AppSettings& settings, TimePoint now);

/// Timers stand still while the computer sleeps, so the clock is looked at once a minute.
std::chrono::milliseconds untilNextLook(std::chrono::milliseconds remaining);

} // namespace pobblewig::ModeLogic
