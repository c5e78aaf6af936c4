#include "activity/RuleStore.h"

#include <algorithm>

namespace pobblewig {

RuleStore::RuleStore(const std::optional<DataDirectory>& directory)
    : m_file(directory, QStringLiteral("rules.json"), QStringLiteral("rules"))
    , m_rules(m_file.load<std::vector<AccountabilityRule>>())
{
}

void RuleStore::add(AccountabilityRule rule)
{
    m_rules.push_back(std::move(rule));
    m_file.save(m_rules);
}

void RuleStore::update(AccountabilityRule rule, TimePoint now)
{
    auto* known = ruleOf(rule.id);
    if (!known)
        return;
    *known = std::move(rule);
    known->updatedAt = now;
    m_file.save(m_rules);
}

void RuleStore::remove(const QUuid& id)
{
    const auto isMeant = [&](const AccountabilityRule& rule) { return rule.id == id; };
    if (std::erase_if(m_rules, isMeant) > 0)
        m_file.save(m_rules);
}

void RuleStore::setEnabled(const QUuid& id, bool enabled, TimePoint now)
{
    auto* known = ruleOf(id);
    if (!known)
        return;
    known->enabled = enabled;
    known->updatedAt = now;
    m_file.save(m_rules);
}

void RuleStore::readAgain()
{
    auto kept = m_file.loadAgain<std::vector<AccountabilityRule>>();
    if (!kept)
        return;
    std::ranges::move(m_rules, std::back_inserter(*kept));
    m_rules = *std::move(kept);
    m_file.save(m_rules);
}

AccountabilityRule* RuleStore::ruleOf(const QUuid& id)
{
    const auto rule = std::ranges::find(m_rules, id, &AccountabilityRule::id);
    return rule == m_rules.end() ? nullptr : &*rule;
}

} // namespace pobblewig
