#pragma once

#include "conversation/proposals/RuleProposal.h"

/// Describes what is to be deleted from memory.
namespace pobblewig::ForgetTexts {

/// Describes observations: `"lecture" from 2026-03-01 to 2026-04-01 tagged psyc-2010`, with the
/// given conditions only.
QString filter(const ProposedForget& forget);

/// "forget section academics.courses"
QString summary(const ProposedForget& forget);

} // namespace pobblewig::ForgetTexts
