#pragma once

#include "settings/AssistantRole.h"
#include "settings/CoachMode.h"
#include "settings/CompanionPersona.h"

#include <QString>

#include <set>

namespace pobblewig {

/// What the model is told about the moment, gathered anew for every turn.
struct SituationSnapshot {
    CoachMode mode = CoachMode::openEnded;
    std::set<AssistantRole> roles;
    CompanionPersona persona = CompanionPersona::classic;
    /// The lines of the current situation.
    QString summary;
};

} // namespace pobblewig
