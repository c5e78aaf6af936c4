#pragma once

#include "activity/RuleEngine.h"

#include <QStringList>

/// The rules as text.
namespace pobblewig::RuleTexts {

/// One line for each rule, or a sentence that there are none; for the model.
QString rulesText(const std::vector<AccountabilityRule>& rules);

/// What each rule would do now, such as "Videos: WOULD FIRE" or "Videos: silent, below its
/// threshold (cooldown: 12 min left)"; for the diagnostics page.
QStringList verdicts(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context);

} // namespace pobblewig::RuleTexts
