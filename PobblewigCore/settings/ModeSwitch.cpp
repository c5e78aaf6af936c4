#include "settings/ModeSwitch.h"

#include "settings/ModeLogic.h"

namespace pobblewig {

ModeSwitch::ModeSwitch(SettingsStore& settings, Clock clock, std::function<void()> changed)
    : m_settings(settings)
    , m_clock(std::move(clock))
    , m_changed(std::move(changed))
{
    m_revertTimer.setSingleShot(true);
    // The settings may have been changed elsewhere, so they decide whether the mode ends.
    QObject::connect(&m_revertTimer, &QTimer::timeout, &m_revertTimer,
        [this] { restoreTemporaryModeRevert(m_clock()); });
}

void ModeSwitch::setMode(CoachMode mode)
{
    m_revertTimer.stop();
    change([&](AppSettings& settings) {
        settings.mode = mode;
        settings.modeRevertAt.reset();
    });
}

void ModeSwitch::setTemporaryMode(CoachMode mode, int minutes)
{
    const auto revertAt = m_clock() + ModeLogic::clampedDuration(minutes);
    armModeRevert(revertAt);
    change([&](AppSettings& settings) {
        settings.mode = mode;
        settings.modeRevertAt = revertAt;
    });
}

void ModeSwitch::armModeRevert(TimePoint at)
{
    m_revertTimer.stop();
    const auto remaining = at - m_clock();
    if (remaining > remaining.zero())
        m_revertTimer.start(ModeLogic::untilNextLook(remaining));
}

void ModeSwitch::restoreTemporaryModeRevert(TimePoint now)
{
    const auto remaining = ModeLogic::remainingTime(m_settings.settings(), now);
    if (!remaining)
        return;
    if (*remaining > remaining->zero())
        m_revertTimer.start(ModeLogic::untilNextLook(*remaining));
    else
        setMode(CoachMode::openEnded);
}

void ModeSwitch::pauseObservation(std::optional<TimePoint> until)
{
    change([&](AppSettings& settings) {
        settings.pausedUntil = until;
        settings.pausedIndefinitely = !until;
    });
}

void ModeSwitch::resumeObservation()
{
    change([](AppSettings& settings) {
        settings.pausedUntil.reset();
        settings.pausedIndefinitely = false;
    });
}

void ModeSwitch::change(const std::function<void(AppSettings&)>& change)
{
    m_settings.update(change);
    m_changed();
}

} // namespace pobblewig
