#include "conversation/ProposalDesk.h"

#include "conversation/proposals/ProposalLogic.h"
#include "conversation/proposals/SelfChangeNote.h"
#include "conversation/proposals/UndoLogic.h"
#include "settings/SettingsDifference.h"

namespace pobblewig {

namespace {

using Kind = RuleProposal::Kind;

QString queuedText(const RuleProposal& proposal)
{
    return QStringLiteral("Queued for your confirmation: %1 — confirm it in the banner above.")
        .arg(proposal.name);
}

QString tooManyText()
{
    return QStringLiteral("Too many changes are waiting for your answer, so I left out the rest. "
                          "Confirm or dismiss some of them, then ask me again.");
}

RuleProposal stamped(RuleProposal proposal, TimePoint now)
{
    proposal.id = QUuid::createUuid();
    proposal.createdAt = now;
    return proposal;
}

QString refusalText(Kind kind, const QString& reason)
{
    switch (kind) {
    case Kind::settingsChange:
        return QStringLiteral("I can't change that setting: %1").arg(reason);
    case Kind::forgetMemory:
        return QStringLiteral("I can't forget that: %1").arg(reason);
    case Kind::calendarEvent:
        return QStringLiteral("I can't add that event: %1").arg(reason);
    case Kind::reminder:
        return QStringLiteral("I can't add that reminder: %1").arg(reason);
    case Kind::rule:
        return QStringLiteral("I can't add that rule: %1").arg(reason);
    }
    Q_UNREACHABLE();
}

/// The tags under which the record of a change can be found.
std::vector<QString> tags(Kind kind)
{
    std::vector<QString> tags;
    if (const auto actionClass = ProposalLogic::actionClass(kind))
        tags.push_back(*actionClass);
    if (kind == Kind::calendarEvent)
        tags.push_back(QStringLiteral("calendar_change"));
    if (kind == Kind::reminder)
        tags.push_back(QStringLiteral("reminder_change"));
    return tags;
}

} // namespace

ProposalDesk::ProposalDesk(
    const Stores& stores, const Moment& moment, const Hands& hands, std::function<void()> changed)
    : m(stores)
    , m_moment(moment)
    , m_chat(hands.chat)
    , m_modes(hands.modes)
    , m_judge(stores, moment, hands.calendarProvider)
    , m_writer(stores, moment, hands.calendarProvider)
    , m_forgetting(hands.forgetting)
    , m_calendarChanged(hands.calendarChanged)
    , m_changed(std::move(changed))
{
}

Task<> ProposalDesk::apply(std::vector<BuddyAction> actions)
{
    auto ordered = ProposalLogic::orderedForApplication(std::move(actions));
    auto isTooMuch = ordered.size() > ActionJudge::maxActions;
    ordered.resize(std::min(ordered.size(), ActionJudge::maxActions));
    for (auto& action : ordered) {
        const auto admission = co_await applyOne(std::move(action));
        isTooMuch |= admission == Admission::tooMany;
    }
    if (isTooMuch)
        m_chat.say(tooManyText());
    m_changed();
}

Task<> ProposalDesk::confirmProposal(QString proposalId)
{
    const auto proposal = m.proposals.proposal(proposalId);
    if (!proposal)
        co_return;
    if (proposal->kind == Kind::rule)
        co_await confirmRule(*proposal);
    else
        co_await confirmWrite(*proposal);
    m_changed();
}

void ProposalDesk::rejectProposal(const QString& proposalId)
{
    const auto proposal = m.proposals.proposal(proposalId);
    if (!proposal || !m.proposals.reject(proposalId))
        return;
    tell(QStringLiteral("Dismissed the pending proposal: %1.").arg(proposal->name), *proposal);
    m_changed();
}

Task<> ProposalDesk::allowAlwaysProposal(QString proposalId)
{
    const auto proposal = m.proposals.proposal(proposalId);
    if (!proposal || proposal->status != RuleProposal::Status::pending)
        co_return;
    if (ProposalLogic::canAllowAlways(*proposal))
        m.settings.allow(*ProposalLogic::actionClass(proposal->kind), m_moment.now());
    co_await confirmProposal(proposalId);
}

Task<> ProposalDesk::answer(QString proposalId, ProposalAnswer answer)
{
    switch (answer) {
    case ProposalAnswer::confirm:
        co_return co_await confirmProposal(std::move(proposalId));
    case ProposalAnswer::allowAlways:
        co_return co_await allowAlwaysProposal(std::move(proposalId));
    case ProposalAnswer::dismiss:
        rejectProposal(proposalId);
    }
}

void ProposalDesk::undoProposal(const QString& proposalId)
{
    const auto proposal = m.proposals.proposal(proposalId);
    if (!proposal || !canBeUndone(*proposal))
        return;
    m.proposals.noteUndone(proposalId);
    noteSuccess(QStringLiteral("Undone at your request: %1.").arg(proposal->name), *proposal);
    if (proposal->kind == Kind::rule)
        m.rules.remove(*m.proposals.created(proposalId));
    else
        restore(*proposal);
    m_changed();
}

bool ProposalDesk::canBeUndone(const RuleProposal& proposal) const
{
    return UndoLogic::canBeUndone(proposal,
        { m.settings.settings(), m.rules.rules(), m.proposals.created(proposal.proposalId) });
}

auto ProposalDesk::applyOne(BuddyAction action) -> Task<Admission>
{
    if (const auto* temporary = std::get_if<TemporaryMode>(&action)) {
        m_modes.setTemporaryMode(temporary->mode, temporary->minutes);
        co_return Admission::admitted;
    }
    auto proposal = stamped(std::get<RuleProposal>(std::move(action)), m_moment.now());
    const auto kind = proposal.kind;
    auto checked = m_judge.checked(std::move(proposal));
    if (!checked) {
        noteFailure(refusalText(kind, checked.error()), kind);
        co_return Admission::admitted;
    }
    if (m_judge.needsConfirmation(*checked))
        co_return queue(*checked);
    co_return co_await writeUnasked(*std::move(checked));
}

auto ProposalDesk::queue(const RuleProposal& proposal) -> Admission
{
    if (m_judge.repeated(proposal))
        return Admission::admitted;
    if (m.proposals.isFull())
        return Admission::tooMany;
    m.proposals.registerProposal(proposal);
    tell(queuedText(proposal), proposal);
    return Admission::admitted;
}

auto ProposalDesk::writeUnasked(RuleProposal proposal) -> Task<Admission>
{
    auto registered = m_judge.repeated(proposal);
    if (!registered) {
        // A change that fails then waits for the user.
        if (m.proposals.isFull())
            co_return Admission::tooMany;
        registered = m.proposals.registerProposal(proposal);
    }
    if (ProposalLogic::payloadEquivalent(*registered, proposal))
        co_await confirmWrite(*std::move(registered));
    co_return Admission::admitted;
}

Task<> ProposalDesk::confirmRule(RuleProposal proposal)
{
    const auto result = co_await m.proposals.confirm(proposal.proposalId, m.rules, m_moment.now());
    if (result.kind == ConfirmResult::Kind::created)
        tell(QStringLiteral("Rule is now active: %1.").arg(proposal.name), proposal);
}

Task<> ProposalDesk::confirmWrite(RuleProposal proposal)
{
    const auto outcome = std::make_shared<ProposalWriter::Outcome>();
    const auto result = co_await m.proposals.confirm(proposal.proposalId, writing(outcome));
    if (result.kind == ConfirmResult::Kind::failed)
        noteFailure(QStringLiteral("That didn't work: %1").arg(result.reason), proposal.kind);
    if (result.kind == ConfirmResult::Kind::created)
        noteSuccess(outcome->text, proposal);
    if (outcome->selfNote)
        tell(*outcome->selfNote, proposal);
}

auto ProposalDesk::writing(const std::shared_ptr<ProposalWriter::Outcome>& outcome)
    -> ProposalManager::Execute
{
    return [this, outcome](RuleProposal proposal) { return execute(std::move(proposal), outcome); };
}

auto ProposalDesk::execute(RuleProposal proposal, std::shared_ptr<ProposalWriter::Outcome> outcome)
    -> Task<ProposalManager::Execution>
{
    const auto kind = proposal.kind;
    if (kind == Kind::forgetMemory)
        m_forgetting();
    auto written = co_await m_writer.performWrite(std::move(proposal));
    if (!written)
        co_return tl::unexpected(written.error().description);
    if (kind == Kind::calendarEvent || kind == Kind::reminder)
        m_calendarChanged();
    *outcome = *std::move(written);
    co_return ProposalManager::Executed { QUuid::createUuid(), outcome->replaced };
}

void ProposalDesk::restore(const RuleProposal& proposal)
{
    const auto before = m.settings.settings();
    const auto after = SettingsDifference::restored(before, *proposal.replaced);
    m.settings.update([&](AppSettings& settings) { settings = after; });
    m_modes.restoreTemporaryModeRevert(m_moment.now());
    if (const auto note = selfChangeNote(proposal.settingsChange->key, before, after))
        tell(*note, proposal);
}

void ProposalDesk::noteSuccess(const QString& text, const RuleProposal& about)
{
    tell(text, about);
    // What was forgotten must not survive in the record of it.
    const auto isForgotten = about.kind == Kind::forgetMemory;
    record(
        isForgotten ? QStringLiteral("Forgot something at the user's request") : text, about.kind);
}

void ProposalDesk::tell(const QString& text, const RuleProposal& about)
{
    m_chat.say({ .text = text,
        .proposalID = about.id,
        .isOffTheRecord = about.kind == Kind::forgetMemory });
}

void ProposalDesk::noteFailure(const QString& text, Kind kind)
{
    m_chat.say({ .text = text, .isOffTheRecord = kind == Kind::forgetMemory });
    record(text, kind);
}

void ProposalDesk::record(const QString& text, Kind kind)
{
    if (!m.settings.settings().memoryEnabled)
        return;
    const auto now = m_moment.now();
    m.memory.record({
        .id = QUuid::createUuid(),
        .occurredAt = now,
        .recordedAt = now,
        .summary = text,
        .source = ObservationSource::systemObserved,
        .tags = tags(kind),
    });
}

} // namespace pobblewig
