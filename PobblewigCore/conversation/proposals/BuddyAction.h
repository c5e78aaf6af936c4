#pragma once

#include "conversation/proposals/RuleProposal.h"

#include <variant>

namespace pobblewig {

struct TemporaryMode {
    CoachMode mode = CoachMode::openEnded;
    int minutes = 0;

    bool operator==(const TemporaryMode&) const = default;
};

/// An action that the model requests: a proposal of any kind for the user, or a temporary switch of
/// the mode.
using BuddyAction = std::variant<RuleProposal, TemporaryMode>;

} // namespace pobblewig
