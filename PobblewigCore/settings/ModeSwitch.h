#pragma once

#include "foundation/Time.h"
#include "settings/CoachMode.h"
#include "settings/SettingsStore.h"

#include <QTimer>

#include <functional>
#include <optional>

namespace pobblewig {

/// Changes the mode, permanently or for a time, and pauses observation. `changed` is called after
/// each change, including the end of a temporary mode.
class ModeSwitch {
public:
    ModeSwitch(SettingsStore& settings, Clock clock, std::function<void()> changed);

    /// Sets a mode that stays, and ends a temporary one.
    void setMode(CoachMode mode);

    /// Sets a mode for a minute to a week; the open-ended mode follows.
    void setTemporaryMode(CoachMode mode, int minutes);

    /// Starts the timer for the end of the settings' temporary mode. Does not wait for a time that
    /// has already passed.
    void armModeRevert(TimePoint at);

    /// Call this at the start. Waits for the end of a temporary mode, or ends one whose time is
    /// over.
    void restoreTemporaryModeRevert(TimePoint now);

    /// Without a time, the pause lasts until `resumeObservation`. With a time no timer is needed:
    /// the pause is over when `SettingsStore::isPaused` says so.
    void pauseObservation(std::optional<TimePoint> until);
    void resumeObservation();

private:
    void change(const std::function<void(AppSettings&)>& change);

    SettingsStore& m_settings;
    Clock m_clock;
    std::function<void()> m_changed;
    QTimer m_revertTimer;
};

} // namespace pobblewig
