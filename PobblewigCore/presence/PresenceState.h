#pragma once

#include "foundation/Time.h"
#include "settings/AppSettings.h"

namespace pobblewig {

/// The state that the tray shows.
struct PresenceState {
    enum class Activity { resting, working, reminding, asleep };

    CoachMode mode = CoachMode::openEnded;
    /// The end of a temporary mode.
    std::optional<TimePoint> modeRevertAt;
    bool isPaused = false;
    /// Nothing if the pause lasts until the user ends it.
    std::optional<TimePoint> pausedUntil;
    Activity activity = Activity::resting;

    bool operator==(const PresenceState&) const = default;
};

/// A small mark on the buddy's face.
enum class PresenceBadge { none, working, reminder, paused, asleep };

} // namespace pobblewig
