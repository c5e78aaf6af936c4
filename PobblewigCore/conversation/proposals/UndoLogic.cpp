#include "conversation/proposals/UndoLogic.h"

#include "settings/SettingsWriteLogic.h"

#include <algorithm>

namespace pobblewig {

bool UndoLogic::canBeUndone(const RuleProposal& proposal, const Standing& standing)
{
    if (proposal.status != RuleProposal::Status::confirmed || proposal.undoneAt)
        return false;
    if (proposal.kind == RuleProposal::Kind::rule)
        return standing.created
            && std::ranges::find(standing.rules, *standing.created, &AccountabilityRule::id)
            != standing.rules.end();
    const auto& change = proposal.settingsChange;
    return change && proposal.replaced && !proposal.replaced->empty()
        && SettingsWriteLogic::isInEffect(change->key, change->value, standing.settings);
}

} // namespace pobblewig
