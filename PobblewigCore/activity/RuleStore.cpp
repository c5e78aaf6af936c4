#include "activity/RuleStore.h"

#include "foundation/Log.h"

#include <algorithm>

namespace pobblewig {

RuleStore::RuleStore(const std::optional<DataDirectory>& directory)
{
    if (!directory)
        return;
    m_file.emplace(*directory, QStringLiteral("rules.json"));
    m_rules =
        m_file->load<std::vector<AccountabilityRule>>().value_or(std::vector<AccountabilityRule>());
}

void RuleStore::add(AccountabilityRule rule)
{
    m_rules.push_back(std::move(rule));
    save();
}

void RuleStore::update(AccountabilityRule rule, TimePoint now)
{
    auto* known = ruleOf(rule.id);
    if (!known)
        return;
    *known = std::move(rule);
    known->updatedAt = now;
    save();
}

void RuleStore::remove(const QUuid& id)
{
    const auto isMeant = [&](const AccountabilityRule& rule) { return rule.id == id; };
    if (std::erase_if(m_rules, isMeant) > 0)
        save();
}

void RuleStore::setEnabled(const QUuid& id, bool enabled, TimePoint now)
{
    auto* known = ruleOf(id);
    if (!known)
        return;
    known->enabled = enabled;
    known->updatedAt = now;
    save();
}

AccountabilityRule* RuleStore::ruleOf(const QUuid& id)
{
    const auto rule = std::ranges::find(m_rules, id, &AccountabilityRule::id);
    return rule == m_rules.end() ? nullptr : &*rule;
}

void RuleStore::save() const
{
    if (!m_file)
        return;
    if (const auto saved = m_file->save(m_rules); !saved)
        Log::line(
            QStringLiteral("buddy: failed to persist rules: %1").arg(saved.error().description()));
}

} // namespace pobblewig
