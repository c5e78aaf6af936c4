#pragma once

#include "activity/FrontmostAppProviding.h"
#include "foundation/Moment.h"
#include "settings/SettingsStore.h"

#include <vector>

namespace pobblewig {

/// Keeps to itself what is never watched: an excluded application in front, and any application
/// while observation rests, is nothing in front. So it reaches no session and no file.
class DiscreetFrontmostAppProvider : public FrontmostAppProviding {
public:
    /// What is kept back, beside what the settings say at each poll.
    struct Discretion {
        const SettingsStore& settings;
        const Moment& moment;
        /// What this platform never shows, whatever the settings say.
        std::vector<QString> alwaysExcluded = {};
    };

    /// Without a source nothing is in front, and nobody is idle. A paused source is not even asked.
    DiscreetFrontmostAppProvider(FrontmostAppProviding* source, Discretion discretion);

    std::optional<FrontmostApp> frontmostApp() override;
    double idleSeconds() override;

private:
    FrontmostAppProviding* m_source;
    Discretion m_discretion;
};

} // namespace pobblewig
