#pragma once

#include "foundation/Calendar.h"
#include "memory/MemoryTiers.h"
#include "prompts/SituationSnapshot.h"
#include "settings/AppSettings.h"

#include <QStringList>

namespace pobblewig {

/// The parts of the current situation.
struct Situation {
    const AppSettings& settings;
    const MemoryTiers& memory;
    TimePoint now;
    Calendar calendar;
    /// The lines of each feature, in the features' order.
    QStringList lines;
    bool canvasIsMissing = false;
};

namespace SituationBuilder {

/// The description of the situation for the model. With the memory off, nothing of it is told.
SituationSnapshot snapshot(const Situation& situation);

} // namespace SituationBuilder

} // namespace pobblewig
