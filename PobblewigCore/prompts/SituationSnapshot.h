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
    /// The mascot and its colours; empty if the prompt is to say nothing of a form.
    QString currentForm = {};
    /// The reference memory's table of contents.
    QString referenceTOC = {};
    /// A line for each of the latest weekly and daily summaries.
    QString chronologicalIndex = {};
    QString sessionInfo = {};
    /// What the last days left open.
    QString unfinishedIntent = {};
    bool canvasConnected = false;
};

} // namespace pobblewig
