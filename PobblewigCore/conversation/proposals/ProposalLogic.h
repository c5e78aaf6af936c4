#pragma once

#include "conversation/proposals/BuddyAction.h"
#include "settings/AppSettings.h"

#include <vector>

/// The rules by which proposals are kept, ordered and asked about.
namespace pobblewig::ProposalLogic {

/// What the user can allow once and for all: "settings_change" for example. Rules have no class.
std::optional<QString> actionClass(RuleProposal::Kind kind);

/// Whether the user is asked first.
bool needsConfirmation(
    const RuleProposal& proposal, const std::map<QString, bool>& actionConfirmations);

/// Whether the user may be offered never to be asked again.
bool canAllowAlways(const RuleProposal& proposal);

/// The same request, whenever it was made and whatever became of it.
bool payloadEquivalent(const RuleProposal& a, const RuleProposal& b);

/// Whether one of the proposals, under the same id or one with a number behind it, makes the same
/// request.
bool wasAskedBefore(const RuleProposal& proposal, const std::vector<RuleProposal>& proposals);

/// "{id}-2", or the first number after it that no proposal has.
QString nextFreeSuffix(const QString& proposalId, const std::vector<RuleProposal>& proposals);

/// A change of the mascot comes before all else, so that a colour scheme is that of the new one.
std::vector<BuddyAction> orderedForApplication(std::vector<BuddyAction> actions);

/// The first of those that are the same, in their order.
std::vector<BuddyAction> dedupedActions(std::vector<BuddyAction> actions);

/// The ids of those settled proposals that are older than the newest `kept`.
std::set<QString> oldestSettled(const std::vector<RuleProposal>& proposals, size_t kept);

AccountabilityRule rule(const RuleProposal& proposal, QUuid id, TimePoint now);

} // namespace pobblewig::ProposalLogic
