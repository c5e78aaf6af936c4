#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "settings/AppSettings.h"

#include <optional>

/// Which confirmed changes can be taken back.
namespace pobblewig::UndoLogic {

/// What the question about the undoing is decided by.
struct Standing {
    const AppSettings& settings;
    const std::vector<AccountabilityRule>& rules;
    /// The object that the proposal created.
    std::optional<QUuid> created = std::nullopt;
};

/// Whether it is a change of a setting or a rule, was confirmed, and is still in effect.
bool canBeUndone(const RuleProposal& proposal, const Standing& standing);

} // namespace pobblewig::UndoLogic
