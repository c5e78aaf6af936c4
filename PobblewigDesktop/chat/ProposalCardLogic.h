#pragma once

#include "PobblewigDesktop/chat/ProposalCard.h"
#include "conversation/proposals/AnsweredProposal.h"
#include "foundation/Calendar.h"
#include "settings/AppSettings.h"

#include <vector>

/// How the conversation tells of proposals.
namespace pobblewig::ProposalCardLogic {

ProposalCards cards(const std::vector<RuleProposal>& pending,
    const std::vector<AnsweredProposal>& answered, const AppSettings& settings,
    const Calendar& calendar);

/// "Done", "Dismissed" or "Undone".
QString name(ProposalCard::Outcome outcome);

} // namespace pobblewig::ProposalCardLogic
