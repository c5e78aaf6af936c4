#pragma once

#include "activity/ActivitySession.h"
#include "foundation/Calendar.h"
#include "memory/MemoryTiers.h"
#include "prompts/SituationSnapshot.h"
#include "settings/AppSettings.h"

namespace pobblewig {

/// What the moment consists of.
struct Situation {
    const AppSettings& settings;
    bool isPaused = false;
    std::optional<ActivitySession> currentSession = std::nullopt;
    const MemoryTiers& memory;
    Calendar calendar;
    TimePoint now;
};

namespace SituationBuilder {

/// What the model is told about the moment.
SituationSnapshot snapshot(const Situation& situation);

} // namespace SituationBuilder

} // namespace pobblewig
