#pragma once

#include "foundation/Time.h"
#include "prompts/SituationSnapshot.h"
#include "settings/AppSettings.h"

namespace pobblewig::SituationBuilder {

/// What the model is told about the moment.
SituationSnapshot situation(const AppSettings& settings, bool isPaused);

} // namespace pobblewig::SituationBuilder
