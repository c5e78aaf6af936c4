#pragma once

#include "activity/FrontmostAppProviding.h"

#include <functional>
#include <vector>

namespace pobblewig {

/// Keeps to itself what is never watched: an excluded application in front, and any application
/// while observation rests, is nothing in front. So it reaches no session and no file.
class DiscreetFrontmostAppProvider : public FrontmostAppProviding {
public:
    struct Discretion {
        /// What this platform never shows, whatever the settings say.
        std::vector<QString> alwaysExcluded;
        /// The user's own list, asked at every poll.
        std::function<std::vector<QString>()> excluded;
        /// While true the source is not even asked.
        std::function<bool()> isPaused;
    };

    /// Without a source nothing is in front, and nobody is idle.
    DiscreetFrontmostAppProvider(FrontmostAppProviding* source, Discretion discretion);

    std::optional<FrontmostApp> frontmostApp() override;
    double idleSeconds() override;

private:
    FrontmostAppProviding* m_source;
    Discretion m_discretion;
};

} // namespace pobblewig
