#pragma once

#include "activity/RuleEngine.h"

#include <QStringList>

/// The rules in words.
namespace pobblewig::RuleTexts {

/// For the model: a line for each rule, or that there are none.
QString rulesText(const std::vector<AccountabilityRule>& rules);

/// For the diagnostics page: what each rule would do now, such as "Videos: WOULD FIRE" or
/// "Videos: silent, below its threshold (cooldown: 12 min left)".
QStringList verdicts(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context);

} // namespace pobblewig::RuleTexts
