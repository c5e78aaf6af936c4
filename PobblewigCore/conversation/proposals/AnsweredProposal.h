#pragma once

#include "conversation/proposals/RuleProposal.h"

namespace pobblewig {

/// A change that the user has answered.
struct AnsweredProposal {
    RuleProposal proposal;
    bool canBeUndone = false;

    bool operator==(const AnsweredProposal&) const = default;
};

} // namespace pobblewig
