#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "memory/MemoryTiers.h"

#include <tl/expected.hpp>

/// Forgets what the user has agreed to.
namespace pobblewig::MemoryForgetter {

/// What went, in a sentence for the user, or why nothing could. A section is emptied of what it
/// holds by now; of observations those stay that were recorded after the proposal.
tl::expected<QString, QString> forget(
    const RuleProposal& proposal, MemoryTiers& memory, TimePoint now);

} // namespace pobblewig::MemoryForgetter
