#include "settings/SettingsFeature.h"

#include "settings/SettingsSituation.h"

namespace pobblewig {

SettingsFeature::SettingsFeature(SettingsStore& settings, const Moment& moment)
    : m_settings(settings)
    , m_moment(moment)
    , m_modes(settings, moment.clock, [this] { changed(); })
{
}

void SettingsFeature::start()
{
    m_modes.restoreTemporaryModeRevert(m_moment.now());
}

Task<> SettingsFeature::tick()
{
    // A pause may have ended.
    changed();
    co_return;
}

std::vector<QString> SettingsFeature::situation(TimePoint) const
{
    return SettingsSituation::lines(m_settings.settings());
}

void SettingsFeature::publish(PublishedState& state) const
{
    state.set(SettingsState {
        .settings = m_settings.settings(),
        .isPaused = m_settings.isPaused(m_moment.now()),
    });
}

} // namespace pobblewig
