#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "settings/AppSettings.h"

#include <map>
#include <optional>

/// Which confirmed changes can be taken back, and what the settings are then.
namespace pobblewig::UndoLogic {

/// The values of `before` that differ in `after`, as "settings.json" has them. A value that it
/// lacks is null.
std::map<QString, JSONValue> replaced(const AppSettings& before, const AppSettings& after);

/// The settings with those values put back.
AppSettings restored(const AppSettings& settings, const std::map<QString, JSONValue>& replaced);

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
