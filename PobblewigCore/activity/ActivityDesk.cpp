#include "activity/ActivityDesk.h"

#include "activity/ActivitySummaryLogic.h"

#include <algorithm>

namespace pobblewig {

ActivityDesk::ActivityDesk(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

void ActivityDesk::saveRule(const AccountabilityRule& rule)
{
    const auto& rules = m.rules.rules();
    if (std::ranges::find(rules, rule.id, &AccountabilityRule::id) == rules.end())
        m.rules.add(rule);
    else
        m.rules.update(rule, m.moment.now());
    m.changed();
}

void ActivityDesk::deleteRule(const QUuid& id)
{
    m.rules.remove(id);
    m.changed();
}

void ActivityDesk::setRuleEnabled(const QUuid& id, bool enabled)
{
    m.rules.setEnabled(id, enabled, m.moment.now());
    m.changed();
}

void ActivityDesk::deleteActivityHistory()
{
    m.activity.deleteHistory();
    m.changed();
}

void ActivityDesk::deleteActivity(TimePoint from, TimePoint to)
{
    m.activity.deleteBetween(from, to, m.moment.now());
    m.changed();
}

std::vector<ActivitySession> ActivityDesk::sessions() const
{
    std::vector<ActivitySession> sessions;
    if (const auto& open = m.activity.currentSession())
        sessions.push_back(*open);
    std::ranges::copy(m.activity.history(), std::back_inserter(sessions));
    return sessions;
}

QString ActivityDesk::activitySummary(TimePoint from, TimePoint to) const
{
    return ActivitySummaryLogic::activitySummary(m.activity.history(), from, to);
}

} // namespace pobblewig
