#pragma once

#include "activity/AccountabilityRule.h"
#include "foundation/StoreFile.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// The user's accountability rules, oldest first, kept in "rules.json".
///
/// Lives on the main thread. Without a directory it works in memory only. An unknown id changes
/// nothing.
class RuleStore {
public:
    explicit RuleStore(const std::optional<DataDirectory>& directory);

    const std::vector<AccountabilityRule>& rules() const { return m_rules; }

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    void add(AccountabilityRule rule);

    /// Replaces the rule with the same id and updates its time of change.
    void update(AccountabilityRule rule, TimePoint now);
    void remove(const QUuid& id);
    void setEnabled(const QUuid& id, bool enabled, TimePoint now);

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    AccountabilityRule* ruleOf(const QUuid& id);

    StoreFile m_file;
    std::vector<AccountabilityRule> m_rules;
};

} // namespace pobblewig
