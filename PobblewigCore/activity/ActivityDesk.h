#pragma once

#include "activity/ActivityTracker.h"
#include "activity/RuleStore.h"
#include "foundation/Moment.h"

#include <functional>

namespace pobblewig {

/// The user's own changes to the activity history and the rules. Every change is published at once.
class ActivityDesk {
public:
    struct Dependencies {
        ActivityTracker& activity;
        RuleStore& rules;
        const Moment& moment;
        /// Called after each change.
        std::function<void()> changed;
    };

    explicit ActivityDesk(Dependencies dependencies);

    /// Replaces the rule with the same id, or adds the rule.
    void saveRule(const AccountabilityRule& rule);
    void deleteRule(const QUuid& id);
    void setRuleEnabled(const QUuid& id, bool enabled);
    void deleteActivityHistory();

    /// Deletes what was recorded between the times, such as a day.
    void deleteActivity(TimePoint from, TimePoint to);

    /// Every session, newest first. The open one ends now.
    std::vector<ActivitySession> sessions() const;
    TimePoint now() const { return m.moment.now(); }
    Calendar calendar() const { return m.moment.calendar(); }

    /// For example "Firefox 82 min; Writer 9 min"; empty for a time without sessions.
    QString activitySummary(TimePoint from, TimePoint to) const;

private:
    Dependencies m;
};

} // namespace pobblewig
