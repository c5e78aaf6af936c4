#pragma once

#include "conversation/proposals/RuleProposal.h"

/// What of the memory is to go, in words.
namespace pobblewig::ForgetTexts {

/// Of observations: `"lecture" from 2026-03-01 to 2026-04-01 tagged psyc-2010`, as far as given.
QString filter(const ProposedForget& forget);

/// "forget section academics.courses"
QString summary(const ProposedForget& forget);

} // namespace pobblewig::ForgetTexts
