#pragma once

#include "foundation/Time.h"
#include "settings/CoachMode.h"
#include "settings/SettingsStore.h"

#include <QTimer>

#include <functional>
#include <optional>

namespace pobblewig {

/// Changes the mode, for good or for a while, and lets observation rest. `changed` is called after
/// each change, the end of a temporary mode included.
class ModeSwitch {
public:
    ModeSwitch(SettingsStore& settings, Clock clock, std::function<void()> changed);

    /// Ends a temporary mode: the new one stays.
    void setMode(CoachMode mode);

    /// For a minute to a week; then the mode is open-ended.
    void setTemporaryMode(CoachMode mode, int minutes);

    /// Waits for the end of the temporary mode that the settings hold. What has passed already is
    /// not waited for.
    void armModeRevert(TimePoint at);

    /// To be called at the start: waits for the end of a temporary mode, or ends the one that ran
    /// out meanwhile.
    void restoreTemporaryModeRevert(TimePoint now);

    /// Without a time, until `resumeObservation`. A time needs no timer: the pause is over once
    /// `SettingsStore::isPaused` says so.
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
