#include "activity/RuleTexts.h"

#include "foundation/Overloaded.h"

namespace pobblewig {

namespace {

QString line(const AccountabilityRule& rule)
{
    return QStringLiteral("- %1: %2, threshold %3 min, cooldown %4 min")
        .arg(rule.name, rule.enabled ? QStringLiteral("enabled") : QStringLiteral("disabled"),
            QString::number(rule.trigger.thresholdMinutes), QString::number(rule.cooldownMinutes));
}

QString words(SuppressionReason reason)
{
    using enum SuppressionReason;
    switch (reason) {
    case observationPaused:
        return QStringLiteral("observation is paused");
    case doNotDisturbMode:
        return QStringLiteral("the mode is Do Not Disturb");
    case ruleDisabled:
        return QStringLiteral("disabled");
    case modeExcluded:
        return QStringLiteral("not in this mode");
    case outsideTimeWindow:
        return QStringLiteral("outside its hours");
    case withinCooldown:
        return QStringLiteral("cooling down");
    case alreadyFiredThisSession:
        return QStringLiteral("already fired in this session");
    case belowThreshold:
        return QStringLiteral("below its threshold");
    case noMatch:
        return QStringLiteral("nothing that it watches");
    }
    Q_UNREACHABLE();
}

QString verdict(const RuleDecision& decision, const RuleEvaluationContext& context)
{
    const auto outcome = Overloaded {
        [](const RuleFire&) { return QStringLiteral("WOULD FIRE"); },
        [](SuppressionReason reason) { return QStringLiteral("silent, ") + words(reason); },
    };
    auto text =
        QStringLiteral("%1: %2").arg(decision.rule.name, std::visit(outcome, decision.outcome));
    if (const auto cooldown = RuleEngine::remainingCooldown(decision.rule, context)) {
        const auto minutes = std::chrono::ceil<std::chrono::minutes>(*cooldown).count();
        text += QStringLiteral(" (cooldown: %1 min left)").arg(minutes);
    }
    return text;
}

} // namespace

QString RuleTexts::rulesText(const std::vector<AccountabilityRule>& rules)
{
    if (rules.empty())
        return QStringLiteral("no rules configured");
    QStringList lines;
    std::ranges::transform(rules, std::back_inserter(lines), line);
    return lines.join(u'\n');
}

QStringList RuleTexts::verdicts(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context)
{
    QStringList verdicts;
    for (const auto& decision : RuleEngine::evaluate(rules, context))
        verdicts.append(verdict(decision, context));
    return verdicts;
}

} // namespace pobblewig
