#pragma once

#include "PobblewigDemoModel/DemoFinding.h"

#include <QDateTime>
#include <QStringList>

#include <optional>

/// What belongs into the reference memory: people, courses, dates.
namespace pobblewig::DemoReferences {

/// What a statement holds of it. Where no offered path fits, "misc" does, if that is offered.
std::optional<DemoFinding> itemIn(
    const QString& statement, const QDateTime& now, const QStringList& paths);

/// "Start a section about baking".
std::optional<DemoFinding> sectionIn(const QString& statement);

} // namespace pobblewig::DemoReferences
