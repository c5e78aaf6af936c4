#include "PobblewigDesktop/chat/ProposalCardLogic.h"

#include "conversation/proposals/ProposalTexts.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

using Outcome = ProposalCard::Outcome;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ProposalCardLogic)
};

Outcome outcome(const RuleProposal& proposal)
{
    if (proposal.status == RuleProposal::Status::rejected)
        return Outcome::dismissed;
    return proposal.undoneAt ? Outcome::undone : Outcome::done;
}

} // namespace

ProposalCards ProposalCardLogic::cards(const Source& source, const Calendar& calendar)
{
    ProposalCards cards;
    for (const auto& proposal : source.pending)
        cards[proposal.id] = { .proposalId = proposal.proposalId };
    for (const auto& [proposal, canBeUndone] : source.answered) {
        const auto lines = ProposalTexts::outcome(proposal, source.settings, calendar);
        const auto settledAt = proposal.settledAt.value_or(proposal.createdAt);
        cards[proposal.id] = { .proposalId = proposal.proposalId,
            .outcome = outcome(proposal),
            .text = lines.join(u'\n'),
            .time = proposal.undoneAt.value_or(settledAt),
            .canBeUndone = canBeUndone };
    }
    return cards;
}

QString ProposalCardLogic::name(Outcome outcome)
{
    switch (outcome) {
    case Outcome::waiting:
        break;
    case Outcome::done:
        return Texts::tr("Done");
    case Outcome::dismissed:
        return Texts::tr("Dismissed");
    case Outcome::undone:
        return Texts::tr("Undone");
    }
    return {};
}

} // namespace pobblewig
