#pragma once

#include "activity/AccountabilityRule.h"
#include "activity/ActivitySession.h"
#include "foundation/Calendar.h"

#include <map>
#include <set>
#include <variant>
#include <vector>

namespace pobblewig {

/// Everything that a decision depends on besides the rule. The caller keeps it between calls.
struct RuleEvaluationContext {
    TimePoint now;
    /// Gives the local hour.
    Calendar calendar;
    CoachMode currentMode = CoachMode::openEnded;
    bool observationPaused = false;
    std::optional<ActivitySession> currentSession = std::nullopt;
    /// Seconds in each category.
    std::map<AppCategory, double> categoryDurations;
    /// The last time each rule fired, by the rule's id.
    std::map<QUuid, TimePoint> lastFiredAt;
    std::set<QString> firedSessionKeys;
};

/// Why a rule does not fire.
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

/// Decides whether rules fire, from values alone.
namespace RuleEngine {

/// Names the first reason against firing: what silences all rules, then the rule's own settings,
/// then its match and threshold, then its cooldown and session.
RuleOutcome evaluate(const AccountabilityRule& rule, const RuleEvaluationContext& context);

std::vector<RuleDecision> evaluate(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context);

struct FirstFire {
    AccountabilityRule rule;
    double duration = 0;
};

/// The first in the order of the list, not by duration.
std::optional<FirstFire> firstFire(
    const std::vector<AccountabilityRule>& rules, const RuleEvaluationContext& context);

/// The key in `firedSessionKeys` for a rule that has fired in a session.
QString sessionKey(const QUuid& ruleID, const QUuid& sessionID);

/// Seconds spent in what the rule watches, or nothing if it is not in front or was not used.
std::optional<double> matchedDuration(
    const AccountabilityRule& rule, const RuleEvaluationContext& context);

/// The remaining time of the rule's cooldown, or nothing if it is over or never began.
std::optional<std::chrono::milliseconds> remainingCooldown(
    const AccountabilityRule& rule, const RuleEvaluationContext& context);

} // namespace RuleEngine

} // namespace pobblewig
