#include "activity/RuleEngine.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool holdsAny(const QString& text, const std::vector<QString>& parts)
{
    return std::ranges::any_of(
        parts, [&](const QString& part) { return text.contains(part.toLower()); });
}

bool matches(const RuleTrigger& trigger, const ActivitySession& session)
{
    const auto name = session.applicationName.toLower();
    const auto identifier = session.bundleIdentifier.toLower();
    const auto title = session.windowTitle.value_or(QString()).toLower();
    return holdsAny(name, trigger.applicationNames) || holdsAny(title, trigger.applicationNames)
        || holdsAny(identifier, trigger.bundleIdentifiers) || holdsAny(title, trigger.domains);
}

bool isOutsideWindow(const AccountabilityRule& rule, const RuleEvaluationContext& context)
{
    if (!rule.activeTimeWindow)
        return false;
    const auto hour = context.calendar.dateTime(context.now).time().hour();
    return !rule.activeTimeWindow->contains(hour);
}

bool hasFiredInSession(const AccountabilityRule& rule, const RuleEvaluationContext& context)
{
    return context.currentSession
        && context.firedSessionKeys.contains(
            RuleEngine::sessionKey(rule.id, context.currentSession->id));
}

} // namespace

RuleOutcome RuleEngine::evaluate(
    const AccountabilityRule& rule, const RuleEvaluationContext& context)
{
    using enum SuppressionReason;
    if (context.observationPaused)
        return observationPaused;
    if (context.currentMode == CoachMode::doNotDisturb)
        return doNotDisturbMode;
    if (!rule.enabled)
        return ruleDisabled;
    if (rule.excludedModes.contains(context.currentMode))
        return modeExcluded;
    if (isOutsideWindow(rule, context))
        return outsideTimeWindow;
    const auto duration = matchedDuration(rule, context);
    if (!duration)
        return noMatch;
    if (*duration < rule.trigger.thresholdMinutes * 60.0)
        return belowThreshold;
    if (remainingCooldown(rule, context))
        return withinCooldown;
    if (hasFiredInSession(rule, context))
        return alreadyFiredThisSession;
    return RuleFire { *duration };
}

std::vector<RuleDecision> RuleEngine::evaluate(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context)
{
    std::vector<RuleDecision> decisions;
    decisions.reserve(rules.size());
    for (const auto& rule : rules)
        decisions.push_back({ rule, evaluate(rule, context) });
    return decisions;
}

auto RuleEngine::firstFire(const std::vector<AccountabilityRule>& rules,
    const RuleEvaluationContext& context) -> std::optional<FirstFire>
{
    for (const auto& rule : rules) {
        const auto outcome = evaluate(rule, context);
        if (const auto* fire = std::get_if<RuleFire>(&outcome))
            return FirstFire { rule, fire->durationSeconds };
    }
    return std::nullopt;
}

QString RuleEngine::sessionKey(const QUuid& ruleID, const QUuid& sessionID)
{
    return json::keyText(ruleID) + u':' + json::keyText(sessionID);
}

std::optional<double> RuleEngine::matchedDuration(
    const AccountabilityRule& rule, const RuleEvaluationContext& context)
{
    const auto& trigger = rule.trigger;
    if (trigger.kind == RuleTrigger::Kind::application) {
        const auto& session = context.currentSession;
        return session && matches(trigger, *session) ? std::optional(session->durationSeconds)
                                                     : std::nullopt;
    }
    if (!trigger.category)
        return std::nullopt;
    const auto entry = context.categoryDurations.find(*trigger.category);
    return entry == context.categoryDurations.end() ? std::nullopt : std::optional(entry->second);
}

std::optional<std::chrono::milliseconds> RuleEngine::remainingCooldown(
    const AccountabilityRule& rule, const RuleEvaluationContext& context)
{
    const auto fired = context.lastFiredAt.find(rule.id);
    if (fired == context.lastFiredAt.end())
        return std::nullopt;
    const auto end = fired->second + std::chrono::minutes(rule.cooldownMinutes);
    return context.now < end ? std::optional(end - context.now) : std::nullopt;
}

} // namespace pobblewig
