#pragma once

#include "activity/AccountabilityRule.h"
#include "activity/ActivitySession.h"
#include "foundation/Calendar.h"

#include <map>
#include <set>
#include <variant>
#include <vector>

namespace pobblewig {

/// All that a verdict depends on besides the rule. Whoever fires rules keeps the memory of it.
struct RuleEvaluationContext {
    TimePoint now;
    /// For the local hour.
    Calendar calendar;
    CoachMode currentMode = CoachMode::openEnded;
    bool observationPaused = false;
    std::optional<ActivitySession> currentSession = std::nullopt;
    /// Seconds in each category.
    std::map<AppCategory, double> categoryDurations;
    /// By rule.
    std::map<QUuid, TimePoint> lastFiredAt;
    std::set<QString> firedSessionKeys;
};

/// Why a rule stays silent.
enum class SuppressionReason {
    observationPaused,
    doNotDisturbMode,
    ruleDisabled,
    modeExcluded,
    outsideTimeWindow,
    withinCooldown,
    alreadyFiredThisSession,
    belowThreshold,
    noMatch
};

struct RuleFire {
    double durationSeconds = 0;

    bool operator==(const RuleFire&) const = default;
};

using RuleOutcome = std::variant<RuleFire, SuppressionReason>;

struct RuleDecision {
    AccountabilityRule rule;
    RuleOutcome outcome;
};

/// Whether the rules speak, from values alone.
namespace RuleEngine {

/// The widest reason for silence wins: one that holds for all rules is named before one that is
/// the rule's own, and that before one of this session.
RuleOutcome evaluate(const AccountabilityRule& rule, const RuleEvaluationContext& context);

std::vector<RuleDecision> evaluate(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context);

struct FirstFire {
    AccountabilityRule rule;
    double duration = 0;
};

/// In the order of the list, not by duration.
std::optional<FirstFire> firstFire(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context);

/// What `firedSessionKeys` holds for a rule that has fired in a session.
QString sessionKey(const QUuid& ruleID, const QUuid& sessionID);

/// Seconds spent in what the rule looks at; nothing if that is not in front, or was not used.
std::optional<double> matchedDuration(
    const AccountabilityRule& rule, const RuleEvaluationContext& context);

/// What is left of the rule's cooldown; nothing if it is over or never began.
std::optional<std::chrono::milliseconds> remainingCooldown(
    const AccountabilityRule& rule, const RuleEvaluationContext& context);

} // namespace RuleEngine

} // namespace pobblewig
