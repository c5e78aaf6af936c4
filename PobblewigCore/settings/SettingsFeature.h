#pragma once

#include "features/Feature.h"
#include "foundation/Moment.h"
#include "settings/ModeSwitch.h"

namespace pobblewig {

struct SettingsState {
    AppSettings settings;
    /// Whether observation is paused.
    bool isPaused = false;

    bool operator==(const SettingsState&) const = default;
};

/// The user's preferences, including those that end by themselves: a temporary mode and a pause.
class SettingsFeature : public Feature {
public:
    /// Both must outlive the feature.
    SettingsFeature(SettingsStore& settings, const Moment& moment);

    ModeSwitch& modes() { return m_modes; }

    void start() override;
    Task<> tick() override;
    std::vector<QString> situation(TimePoint now) const override;
    void publish(PublishedState& state) const override;
    int revision() const override { return Feature::revision() + m_settings.revision(); }

private:
    SettingsStore& m_settings;
    const Moment& m_moment;
    ModeSwitch m_modes;
};

} // namespace pobblewig
