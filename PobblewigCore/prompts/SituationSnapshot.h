#pragma once

#include "settings/AssistantRole.h"
#include "settings/CoachMode.h"
#include "settings/CompanionPersona.h"

#include <QString>

#include <set>

namespace pobblewig {

/// What the model is told about the current situation, gathered for every turn.
struct SituationSnapshot {
    CoachMode mode = CoachMode::openEnded;
    std::set<AssistantRole> roles;
    CompanionPersona persona = CompanionPersona::classic;
    /// The lines of the current situation.
    QString summary;
    /// The mascot and its colours; empty if the prompt does not mention them.
    QString currentForm = {};
    /// The reference memory's table of contents.
    QString referenceTOC = {};
    /// One line for each of the latest weekly and daily summaries.
    QString chronologicalIndex = {};
    QString sessionInfo = {};
    /// What the last days left unfinished.
    QString unfinishedIntent = {};
    /// The user could connect Canvas, but has not done so.
    bool canvasIsMissing = false;
};

} // namespace pobblewig
