#pragma once

#include "conversation/proposals/RuleProposal.h"

#include <variant>

namespace pobblewig {

struct TemporaryMode {
    CoachMode mode = CoachMode::openEnded;
    int minutes = 0;

    bool operator==(const TemporaryMode&) const = default;
};

/// What the model asks the program to do: to put a proposal before the user, of whatever kind, or
/// to switch the mode for a while.
using BuddyAction = std::variant<RuleProposal, TemporaryMode>;

} // namespace pobblewig
