#pragma once

#include "conversation/proposals/RuleProposal.h"
#include "memory/MemoryTiers.h"

#include <tl/expected.hpp>

/// What a request to forget comes to.
namespace pobblewig::ForgetLogic {

/// The proposal with the whole id of what it means, and in its name exactly what would go. Else the
/// reason why it cannot be asked of the user, to be told to the model.
tl::expected<RuleProposal, QString> resolveForget(RuleProposal proposal, const MemoryTiers& memory);

/// All that fit the filter, as a search finds them, and were recorded by `askedAt`. A filter
/// without any condition, or with a bound that cannot be read, is refused.
tl::expected<std::vector<DatedObservation>, QString> matchingObservations(
    const ProposedForget& forget, const ObservationStore& observations, TimePoint askedAt);

} // namespace pobblewig::ForgetLogic
