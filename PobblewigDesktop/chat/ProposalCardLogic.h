#pragma once

#include "PobblewigDesktop/chat/ProposalCard.h"
#include "conversation/proposals/AnsweredProposal.h"
#include "foundation/Calendar.h"
#include "settings/AppSettings.h"

#include <vector>

/// How the conversation tells of proposals.
namespace pobblewig::ProposalCardLogic {

/// What the cards are made from.
struct Source {
    std::vector<RuleProposal> pending;
    std::vector<AnsweredProposal> answered;
    AppSettings settings;

    bool operator==(const Source&) const = default;
};

ProposalCards cards(const Source& source, const Calendar& calendar);

/// "Done", "Dismissed" or "Undone".
QString name(ProposalCard::Outcome outcome);

} // namespace pobblewig::ProposalCardLogic
