#include "conversation/proposals/ProposalLogic.h"

#include "foundation/Overloaded.h"
#include "settings/ActionAutonomy.h"
#include "settings/SettingsWriteLogic.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool changesWhatAlwaysAsks(const RuleProposal& proposal)
{
    const auto& change = proposal.settingsChange;
    return change && SettingsWriteLogic::alwaysAsks(change->key, change->value);
}

bool isChangeOfMascot(const BuddyAction& action)
{
    const auto* proposal = std::get_if<RuleProposal>(&action);
    return proposal && ProposalLogic::changesMascot(*proposal);
}

/// Nothing but a change of a setting can be undone behind a proposal's back.
bool isInEffect(const RuleProposal& proposal, const AppSettings& settings)
{
    const auto& change = proposal.settingsChange;
    return !change || SettingsWriteLogic::isInEffect(change->key, change->value, settings);
}

bool hasID(const std::vector<RuleProposal>& proposals, const QString& proposalId)
{
    return std::ranges::find(proposals, proposalId, &RuleProposal::proposalId) != proposals.end();
}

/// Whether it has this id, or one derived from it after a collision.
bool isOfID(const RuleProposal& proposal, const QString& proposalId)
{
    const auto& id = proposal.proposalId;
    const auto number = QStringView(id).sliced(std::min(id.size(), proposalId.size()));
    return id.startsWith(proposalId)
        && (number.isEmpty() || (number.startsWith(u'-') && number.sliced(1).toInt() > 1));
}

/// A text that is equal for equal actions.
QString identity(const BuddyAction& action)
{
    const Overloaded identityOf {
        [](const RuleProposal& proposal) { return proposal.proposalId; },
        [](const TemporaryMode& temporary) {
            return QStringLiteral("mode:%1:%2")
                .arg(EnumNames::text(temporary.mode), QString::number(temporary.minutes));
        },
    };
    return std::visit(identityOf, action);
}

} // namespace

std::optional<QString> ProposalLogic::actionClass(RuleProposal::Kind kind)
{
    switch (kind) {
    case RuleProposal::Kind::rule:
        return std::nullopt;
    case RuleProposal::Kind::calendarEvent:
        return ActionAutonomy::calendarWrite.toString();
    case RuleProposal::Kind::reminder:
        return ActionAutonomy::reminderWrite.toString();
    case RuleProposal::Kind::settingsChange:
        return ActionAutonomy::settingsChange.toString();
    case RuleProposal::Kind::forgetMemory:
        return ActionAutonomy::memoryForget.toString();
    }
    Q_UNREACHABLE();
}

bool ProposalLogic::needsConfirmation(
    const RuleProposal& proposal, const std::map<QString, bool>& actionConfirmations)
{
    const auto kind = actionClass(proposal.kind);
    return !kind || changesWhatAlwaysAsks(proposal)
        || ActionAutonomy::requiresConfirmation(*kind, actionConfirmations);
}

bool ProposalLogic::canAllowAlways(const RuleProposal& proposal)
{
    const auto kind = actionClass(proposal.kind);
    return kind && !needsConfirmation(proposal, { { *kind, false } });
}

bool ProposalLogic::payloadEquivalent(const RuleProposal& a, const RuleProposal& b)
{
    auto other = b;
    other.id = a.id;
    other.proposalId = a.proposalId;
    other.status = a.status;
    other.createdAt = a.createdAt;
    other.settledAt = a.settledAt;
    other.replaced = a.replaced;
    other.undoneAt = a.undoneAt;
    return a == other;
}

bool ProposalLogic::changesMascot(const RuleProposal& proposal)
{
    return proposal.settingsChange && proposal.settingsChange->key == u"mascot";
}

bool ProposalLogic::stillHolds(const RuleProposal& proposal, const Standing& standing)
{
    using Status = RuleProposal::Status;
    if (proposal.status == Status::pending)
        return true;
    const auto isRecent = proposal.settledAt
        && (!standing.lastMessageAt || *proposal.settledAt >= *standing.lastMessageAt);
    return isRecent
        && (proposal.status == Status::rejected || proposal.undoneAt
            || isInEffect(proposal, standing.settings));
}

const RuleProposal* ProposalLogic::repeated(const RuleProposal& proposal,
    const std::vector<RuleProposal>& proposals, const Standing& standing)
{
    const auto isRepeated = [&](const RuleProposal& known) {
        const auto isSame = known.proposalId == proposal.proposalId;
        if (isSame && known.status == RuleProposal::Status::pending)
            return true;
        return isOfID(known, proposal.proposalId) && payloadEquivalent(known, proposal)
            && stillHolds(known, standing);
    };
    const auto found = std::ranges::find_if(proposals, isRepeated);
    return found == proposals.end() ? nullptr : &*found;
}

QString ProposalLogic::nextFreeSuffix(
    const QString& proposalId, const std::vector<RuleProposal>& proposals)
{
    for (int number = 2;; ++number) {
        auto candidate = QStringLiteral("%1-%2").arg(proposalId, QString::number(number));
        if (!hasID(proposals, candidate))
            return candidate;
    }
}

std::vector<BuddyAction> ProposalLogic::orderedForApplication(std::vector<BuddyAction> actions)
{
    std::ranges::stable_partition(actions, isChangeOfMascot);
    return actions;
}

bool ProposalLogic::haveSameIdentity(const BuddyAction& a, const BuddyAction& b)
{
    return identity(a) == identity(b);
}

std::vector<BuddyAction> ProposalLogic::dedupedActions(std::vector<BuddyAction> actions)
{
    std::set<QString> known;
    std::erase_if(
        actions, [&](const auto& action) { return !known.insert(identity(action)).second; });
    return actions;
}

std::set<QString> ProposalLogic::oldestSettled(
    const std::vector<RuleProposal>& proposals, size_t kept)
{
    std::vector<const RuleProposal*> settled;
    for (const auto& proposal : proposals) {
        if (proposal.status != RuleProposal::Status::pending)
            settled.push_back(&proposal);
    }
    std::ranges::stable_sort(settled, std::greater(), &RuleProposal::createdAt);
    std::set<QString> ids;
    for (size_t index = kept; index < settled.size(); ++index)
        ids.insert(settled[index]->proposalId);
    return ids;
}

AccountabilityRule ProposalLogic::rule(const RuleProposal& proposal, QUuid id, TimePoint now)
{
    return {
        .id = id,
        .name = proposal.name,
        .trigger = { .applicationNames = proposal.applicationMatch,
            .bundleIdentifiers = proposal.bundleIDMatch,
            .domains = proposal.domainMatch,
            .thresholdMinutes = proposal.thresholdMinutes },
        .excludedModes = proposal.excludedModes,
        .cooldownMinutes = proposal.cooldownMinutes,
        .responseStyle = proposal.responseStyle,
        .createdAt = now,
        .updatedAt = now,
    };
}

} // namespace pobblewig
