#pragma once

#include "foundation/Time.h"
#include "settings/AppSettings.h"

namespace pobblewig {

/// What the tray tells of the buddy.
struct PresenceState {
    enum class Activity { resting, working, reminding, asleep };

    CoachMode mode = CoachMode::openEnded;
    /// When a temporary mode ends.
    std::optional<TimePoint> modeRevertAt;
    bool isPaused = false;
    /// Nothing for a pause that somebody has to end.
    std::optional<TimePoint> pausedUntil;
    Activity activity = Activity::resting;

    bool operator==(const PresenceState&) const = default;
};

/// A small mark on the buddy's face.
enum class PresenceBadge { none, working, reminder, paused, asleep };

} // namespace pobblewig
