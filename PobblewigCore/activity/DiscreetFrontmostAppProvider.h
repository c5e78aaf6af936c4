#pragma once

#include "activity/FrontmostAppProviding.h"
#include "foundation/Moment.h"
#include "settings/ExcludedApps.h"
#include "settings/SettingsStore.h"

#include <vector>

namespace pobblewig {

/// Hides what must not be watched: reports no application while an excluded one is in front or
/// while observation is paused, so that it reaches no session and no file.
class DiscreetFrontmostAppProvider : public FrontmostAppProviding {
public:
    /// What is hidden, in addition to the settings, which are read at each poll.
    struct Discretion {
        const SettingsStore& settings;
        const Moment& moment;
        /// Applications that this platform always hides, regardless of the settings.
        std::vector<QString> alwaysExcluded = {};
        /// The platform's names of applications.
        ExcludedApps::IdentifierOf identifierOf = nullptr;
    };

    /// Without a source no application is in front and the user is never idle. While paused, the
    /// source is not asked for the application in front.
    DiscreetFrontmostAppProvider(FrontmostAppProviding* source, Discretion discretion);

    /// All texts fit on one line.
    std::optional<FrontmostApp> frontmostApp() override;
    double idleSeconds() override;

private:
    ExcludedApps excluded() const;

    FrontmostAppProviding* m_source;
    Discretion m_discretion;
};

} // namespace pobblewig
