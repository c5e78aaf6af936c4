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

QString ActivityDesk::activitySummary(TimePoint from, TimePoint to) const
{
    return ActivitySummaryLogic::activitySummary(m.activity.history(), from, to);
}

} // namespace pobblewig
