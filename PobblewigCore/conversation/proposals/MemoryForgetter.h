#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "memory/MemoryTiers.h"

#include <tl/expected.hpp>

/// Deletes from memory what the user has agreed to forget.
namespace pobblewig::MemoryForgetter {

/// Returns a sentence for the user about what was deleted, or why nothing could be. Deletes the
/// current items of a section, but no observations that were recorded after the proposal.
tl::expected<QString, QString> forget(
    const RuleProposal& proposal, MemoryTiers& memory, TimePoint now);

} // namespace pobblewig::MemoryForgetter
