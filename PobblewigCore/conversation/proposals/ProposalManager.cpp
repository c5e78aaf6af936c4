#include "conversation/proposals/ProposalManager.h"

#include "foundation/Log.h"

#include <algorithm>

namespace pobblewig {

namespace {

using Status = RuleProposal::Status;

bool isPending(const RuleProposal& proposal)
{
    return proposal.status == Status::pending;
}

Task<ProposalManager::Execution> addRule(RuleProposal proposal, RuleStore* rules, TimePoint now)
{
    const auto id = QUuid::createUuid();
    rules->add(ProposalLogic::rule(proposal, id, now));
    co_return ProposalManager::Executed { .created = id };
}

} // namespace

ProposalManager::ProposalManager(const std::optional<DataDirectory>& directory, Clock clock)
    : m_file(directory, QStringLiteral("proposals.json"), QStringLiteral("proposals"))
    , m_clock(std::move(clock))
    , m_state(m_file.load<SavedState>())
{
}

std::vector<RuleProposal> ProposalManager::pendingProposals() const
{
    std::vector<RuleProposal> pending;
    std::ranges::copy_if(m_state.proposals, std::back_inserter(pending), isPending);
    std::ranges::stable_sort(pending, {}, &RuleProposal::createdAt);
    return pending;
}

std::vector<RuleProposal> ProposalManager::settledProposals() const
{
    std::vector<RuleProposal> settled;
    std::ranges::remove_copy_if(m_state.proposals, std::back_inserter(settled), isPending);
    return settled;
}

std::optional<RuleProposal> ProposalManager::proposal(const QString& proposalId) const
{
    const auto found = std::ranges::find(m_state.proposals, proposalId, &RuleProposal::proposalId);
    return found == m_state.proposals.end() ? std::nullopt : std::optional(*found);
}

std::optional<RuleProposal> ProposalManager::repeated(
    const RuleProposal& proposal, const ProposalLogic::Standing& standing) const
{
    const auto* known = ProposalLogic::repeated(proposal, m_state.proposals, standing);
    return known ? std::optional(*known) : std::nullopt;
}

RuleProposal ProposalManager::registerProposal(RuleProposal proposal)
{
    if (find(proposal.proposalId)) {
        Log::line(QStringLiteral("buddy: proposalId collision — registering as a new proposal"));
        proposal.proposalId = ProposalLogic::nextFreeSuffix(proposal.proposalId, m_state.proposals);
    }
    proposal.status = Status::pending;
    m_state.proposals.push_back(proposal);
    m_file.save(m_state);
    return proposal;
}

Task<ConfirmResult> ProposalManager::confirm(QString proposalId, Execute execute)
{
    using Kind = ConfirmResult::Kind;
    if (const auto earlier = created(proposalId))
        co_return ConfirmResult { .kind = Kind::duplicate, .ruleID = *earlier };
    if (m_underWay.contains(proposalId))
        co_return ConfirmResult { .kind = Kind::duplicate };
    const auto meant = proposal(proposalId);
    if (!meant || !isPending(*meant))
        co_return ConfirmResult { .kind = Kind::notFound };
    m_underWay.insert(proposalId);
    auto executed = co_await execute(*meant);
    m_underWay.erase(proposalId);
    if (!executed)
        co_return ConfirmResult { .kind = Kind::failed, .reason = executed.error() };
    const auto created = executed->created;
    settleAsConfirmed(*meant, *std::move(executed));
    co_return ConfirmResult { .kind = Kind::created, .ruleID = created };
}

Task<ConfirmResult> ProposalManager::confirm(
    QString proposalId, RuleStore& ruleStore, TimePoint now)
{
    return confirm(std::move(proposalId), [rules = &ruleStore, now](RuleProposal proposal) {
        return addRule(std::move(proposal), rules, now);
    });
}

bool ProposalManager::reject(const QString& proposalId)
{
    auto* proposal = find(proposalId);
    if (!proposal || !isPending(*proposal) || m_underWay.contains(proposalId))
        return false;
    settle(*proposal, Status::rejected);
    return true;
}

std::optional<QUuid> ProposalManager::created(const QString& proposalId) const
{
    const auto created = m_state.ledger.find(proposalId);
    return created == m_state.ledger.end() ? std::nullopt : std::optional(created->second);
}

void ProposalManager::noteUndone(const QString& proposalId)
{
    auto* proposal = find(proposalId);
    if (!proposal || proposal->status != Status::confirmed)
        return;
    proposal->undoneAt = m_clock();
    m_file.save(m_state);
}

void ProposalManager::dropForgets()
{
    const auto isForget = [](const RuleProposal& proposal) {
        return proposal.kind == RuleProposal::Kind::forgetMemory;
    };
    if (removeIf(isForget) > 0)
        m_file.save(m_state);
}

void ProposalManager::readAgain()
{
    auto kept = m_file.loadAgain<SavedState>();
    if (!kept)
        return;
    std::ranges::move(m_state.proposals, std::back_inserter(kept->proposals));
    kept->ledger.merge(m_state.ledger);
    m_state = *std::move(kept);
    m_file.save(m_state);
}

RuleProposal* ProposalManager::find(const QString& proposalId)
{
    const auto found = std::ranges::find(m_state.proposals, proposalId, &RuleProposal::proposalId);
    return found == m_state.proposals.end() ? nullptr : &*found;
}

void ProposalManager::settleAsConfirmed(const RuleProposal& meant, Executed executed)
{
    auto* proposal = find(meant.proposalId);
    if (!proposal || proposal->id != meant.id)
        return;
    m_state.ledger[meant.proposalId] = executed.created;
    proposal->replaced = std::move(executed.replaced);
    // What was forgotten must not survive in the text of the request.
    if (proposal->forget) {
        proposal->forget = ProposedForget { .target = proposal->forget->target };
        proposal->name.clear();
    }
    settle(*proposal, Status::confirmed);
}

void ProposalManager::settle(RuleProposal& proposal, Status status)
{
    proposal.status = status;
    proposal.settledAt = m_clock();
    pruneSettled();
    m_file.save(m_state);
}

void ProposalManager::pruneSettled()
{
    const auto unwanted = ProposalLogic::oldestSettled(m_state.proposals, maxSettled);
    removeIf([&](const auto& proposal) { return unwanted.contains(proposal.proposalId); });
}

size_t ProposalManager::removeIf(const std::function<bool(const RuleProposal&)>& isUnwanted)
{
    return std::erase_if(m_state.proposals, [&](const auto& proposal) {
        if (!isUnwanted(proposal))
            return false;
        m_state.ledger.erase(proposal.proposalId);
        return true;
    });
}

} // namespace pobblewig
