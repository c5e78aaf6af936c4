#include "conversation/ActionJudge.h"

#include "conversation/proposals/ForgetLogic.h"
#include "conversation/proposals/ProposalLogic.h"
#include "conversation/proposals/ProposalManager.h"
#include "memory/history/ChatHistoryStore.h"
#include "settings/SettingsStore.h"
#include "settings/SettingsWriteLogic.h"

#include <algorithm>
#include <ranges>

namespace pobblewig {

namespace {

using Actions = std::vector<BuddyAction>;
using Kind = RuleProposal::Kind;
using Verdict = ActionVerdict::Kind;

bool needsCalendars(Kind kind)
{
    return kind == Kind::calendarEvent || kind == Kind::reminder;
}

const RuleProposal* withID(const Actions& actions, const QString& proposalId)
{
    for (const auto& action : actions) {
        const auto* proposal = std::get_if<RuleProposal>(&action);
        if (proposal && proposal->proposalId == proposalId)
            return proposal;
    }
    return nullptr;
}

void applyForm(const RuleProposal& proposal, AppSettings& settings)
{
    if (!ProposalLogic::changesMascot(proposal))
        return;
    const auto& [key, value] = *proposal.settingsChange;
    std::ignore = SettingsWriteLogic::apply(key, value, settings);
}

ActionVerdict verdictOfRepeated(const RuleProposal& known, const RuleProposal& proposal)
{
    if (!ProposalLogic::payloadEquivalent(known, proposal))
        return { Verdict::idTaken };
    switch (known.status) {
    case RuleProposal::Status::pending:
        return { Verdict::waiting };
    case RuleProposal::Status::confirmed:
        return { known.undoneAt ? Verdict::dismissed : Verdict::done };
    case RuleProposal::Status::rejected:
        return { Verdict::dismissed };
    }
    Q_UNREACHABLE();
}

std::optional<TimePoint> lastMessageAt(const ChatHistoryStore& history)
{
    auto newestFirst = history.messages() | std::views::reverse;
    const auto newest = std::ranges::find(newestFirst, ChatMessage::Role::user, &ChatMessage::role);
    return newest == newestFirst.end() ? std::nullopt : std::optional(newest->timestamp);
}

} // namespace

ActionJudge::ActionJudge(
    const Stores& stores, const Moment& moment, const CalendarDataProviding& calendarProvider)
    : m(stores)
    , m_moment(moment)
    , m_calendarProvider(calendarProvider)
{
}

ActionVerdict ActionJudge::verdict(const BuddyAction& action, const Actions& requested) const
{
    const auto* proposed = std::get_if<RuleProposal>(&action);
    if (requested.size() >= maxActions)
        return { Verdict::tooMany };
    if (!proposed)
        return { Verdict::noted };
    const auto* earlier = withID(requested, proposed->proposalId);
    if (earlier && !ProposalLogic::payloadEquivalent(*earlier, *proposed))
        return { Verdict::idTaken };
    auto proposal = *proposed;
    proposal.createdAt = m_moment.now();
    const auto checked = this->checked(std::move(proposal), requested);
    if (!checked)
        return { Verdict::refused, checked.error() };
    if (const auto known = repeated(*checked))
        return verdictOfRepeated(*known, *checked);
    if (!needsConfirmation(*checked))
        return { Verdict::approved };
    return { !earlier && isFull(requested) ? Verdict::tooMany : Verdict::pending };
}

tl::expected<RuleProposal, QString> ActionJudge::checked(
    RuleProposal proposal, const Actions& requested) const
{
    if (needsCalendars(proposal.kind) && !m_calendarProvider.isAvailable())
        return tl::unexpected(QStringLiteral("no calendar is connected on this computer"));
    if (proposal.kind == Kind::forgetMemory)
        return ForgetLogic::resolveForget(std::move(proposal), m.memory);
    if (proposal.kind != Kind::settingsChange)
        return proposal;
    if (auto reason = settingRefusal(proposal, requested))
        return tl::unexpected(*std::move(reason));
    return proposal;
}

std::optional<RuleProposal> ActionJudge::repeated(const RuleProposal& proposal) const
{
    return m.proposals.repeated(proposal, { m.settings.settings(), lastMessageAt(m.history) });
}

bool ActionJudge::needsConfirmation(const RuleProposal& proposal) const
{
    return ProposalLogic::needsConfirmation(proposal, m.settings.settings().actionConfirmations);
}

std::optional<QString> ActionJudge::settingRefusal(
    const RuleProposal& proposal, const Actions& requested) const
{
    if (!proposal.settingsChange)
        return QStringLiteral("missing settings payload");
    const auto& [key, value] = *proposal.settingsChange;
    // Colours may belong to the form that the buddy is about to get.
    if (!SettingsWriteLogic::validate(key, value, settingsWithForms(requested)))
        return std::nullopt;
    return SettingsWriteLogic::validate(key, value, m.settings.settings());
}

AppSettings ActionJudge::settingsWithForms(const Actions& requested) const
{
    auto settings = m.settings.settings();
    for (const auto& proposal : m.proposals.pendingProposals())
        applyForm(proposal, settings);
    for (const auto& action : requested) {
        if (const auto* proposal = std::get_if<RuleProposal>(&action))
            applyForm(*proposal, settings);
    }
    return settings;
}

bool ActionJudge::isFull(const Actions& requested) const
{
    const auto isNew = [this](const BuddyAction& action) {
        const auto* proposal = std::get_if<RuleProposal>(&action);
        return proposal && needsConfirmation(*proposal)
            && !m.proposals.proposal(proposal->proposalId);
    };
    const auto waiting = m.proposals.pendingProposals().size();
    return waiting + size_t(std::ranges::count_if(requested, isNew)) >= ProposalManager::maxPending;
}

} // namespace pobblewig
