#pragma once

#include "activity/ActivityDesk.h"
#include "activity/DiscreetFrontmostAppProvider.h"
#include "activity/ObservationReport.h"
#include "features/Feature.h"
#include "features/Stores.h"

namespace pobblewig {

struct ActivityState {
    std::optional<ActivitySession> currentSession;
    /// The latest 10, newest first.
    std::vector<ActivitySession> recentSessions;
    std::vector<AccountabilityRule> ruleList;

    bool operator==(const ActivityState&) const = default;
};

/// Tracks the application in front and evaluates the rules that watch it.
class ActivityFeature : public Feature {
public:
    /// What the session reports about applications.
    struct Observation {
        /// Null if there is no source.
        FrontmostAppProviding* frontmostProvider = nullptr;
        /// Applications of this platform that are never watched, regardless of the settings.
        std::vector<QString> alwaysExcluded = {};
        /// The names by which the settings can exclude an application.
        ExcludedApps::IdentifierOf identifierOf = nullptr;
        ObservationReport report = {};
    };

    /// `stores` and `moment` must outlive the feature.
    ActivityFeature(const Stores& stores, const Moment& moment,
        const std::optional<DataDirectory>& directory, Observation observation);

    ActivityDesk& desk() { return m_desk; }
    const ActivityTracker& tracker() const { return m_tracker; }
    const ObservationReport& report() const { return m_report; }

    /// What each rule would do now, and why.
    QStringList ruleVerdicts() const;

    Task<> tick() override;
    std::vector<QString> situation(TimePoint now) const override;
    std::vector<Tool> tools() override;
    void publish(PublishedState& state) const override;
    int revision() const override { return Feature::revision() + m_rules.revision(); }

private:
    const SettingsStore& m_settings;
    RuleStore& m_rules;
    const Moment& m_moment;
    ObservationReport m_report;
    DiscreetFrontmostAppProvider m_frontmost;
    ActivityTracker m_tracker;
    ActivityDesk m_desk;
};

} // namespace pobblewig
