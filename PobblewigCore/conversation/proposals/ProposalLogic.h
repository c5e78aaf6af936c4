#pragma once

#include "conversation/proposals/BuddyAction.h"
#include "settings/AppSettings.h"

#include <vector>

/// Rules by which proposals are kept, ordered and confirmed.
namespace pobblewig::ProposalLogic {

/// The class that the user can allow permanently, such as "settings_change". Rules have no class.
std::optional<QString> actionClass(RuleProposal::Kind kind);

/// Whether the user is asked first.
bool needsConfirmation(
    const RuleProposal& proposal, const std::map<QString, bool>& actionConfirmations);

/// Whether the user may be offered "allow always".
bool canAllowAlways(const RuleProposal& proposal);

/// Whether both make the same request, regardless of time and status.
bool payloadEquivalent(const RuleProposal& a, const RuleProposal& b);

/// Whether it changes the buddy's form.
bool changesMascot(const RuleProposal& proposal);

/// What decides whether an earlier answer still holds.
struct Standing {
    const AppSettings& settings;
    /// When the user wrote the newest message.
    std::optional<TimePoint> lastMessageAt = std::nullopt;
};

/// Whether a proposal waits, or was answered since the user's newest message and is still in effect
/// if it was confirmed.
bool stillHolds(const RuleProposal& proposal, const Standing& standing);

/// The proposal that this one repeats, or null: one that waits under the same id, or one that makes
/// the same request under the same id, with or without a number appended, and still holds.
const RuleProposal* repeated(const RuleProposal& proposal,
    const std::vector<RuleProposal>& proposals, const Standing& standing);

/// "{id}-2", or the next number that no proposal uses.
QString nextFreeSuffix(const QString& proposalId, const std::vector<RuleProposal>& proposals);

/// Puts a change of the mascot first, so that a colour scheme applies to the new mascot.
std::vector<BuddyAction> orderedForApplication(std::vector<BuddyAction> actions);

/// Whether they are the same request, or two with the same id.
bool haveSameIdentity(const BuddyAction& a, const BuddyAction& b);

/// Keeps the first of the actions with the same identity, in order.
std::vector<BuddyAction> dedupedActions(std::vector<BuddyAction> actions);

/// The ids of settled proposals other than the newest `kept`.
std::set<QString> oldestSettled(const std::vector<RuleProposal>& proposals, size_t kept);

AccountabilityRule rule(const RuleProposal& proposal, QUuid id, TimePoint now);

} // namespace pobblewig::ProposalLogic
