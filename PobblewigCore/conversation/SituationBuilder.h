#pragma once

#include "foundation/Calendar.h"
#include "memory/MemoryTiers.h"
#include "prompts/SituationSnapshot.h"
#include "settings/AppSettings.h"

#include <QStringList>

namespace pobblewig {

/// What the moment consists of.
struct Situation {
    const AppSettings& settings;
    const MemoryTiers& memory;
    Calendar calendar;
    /// What each feature says of it, in the features' order.
    QStringList lines;
};

namespace SituationBuilder {

/// What the model is told about the moment.
SituationSnapshot snapshot(const Situation& situation);

} // namespace SituationBuilder

} // namespace pobblewig
