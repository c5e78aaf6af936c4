#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "memory/MemoryTiers.h"

#include <tl/expected.hpp>

/// Resolves a request to forget.
namespace pobblewig::ForgetLogic {

/// Returns the proposal with the full id of its target and a name that says exactly what would be
/// deleted. The error tells the model why the user cannot be asked.
tl::expected<RuleProposal, QString> resolveForget(RuleProposal proposal, const MemoryTiers& memory);

/// Finds everything that matches the filter as a search would, and that was recorded by `askedAt`.
/// Refuses a filter without conditions, or with an unreadable bound.
tl::expected<std::vector<DatedObservation>, QString> matchingObservations(
    const ProposedForget& forget, const ObservationStore& observations, TimePoint askedAt);

} // namespace pobblewig::ForgetLogic
