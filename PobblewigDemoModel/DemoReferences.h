#pragma once

#include "PobblewigDemoModel/DemoFinding.h"

#include <QDateTime>
#include <QStringList>

#include <optional>

/// Finds what belongs in the reference memory: people, courses, dates.
namespace pobblewig::DemoReferences {

/// The reference item in a statement. Uses "misc" if no other offered path fits, provided that it
/// is offered.
std::optional<DemoFinding> itemIn(
    const QString& statement, const QDateTime& now, const QStringList& paths);

/// Reads for example "Start a section about baking".
std::optional<DemoFinding> sectionIn(const QString& statement);

} // namespace pobblewig::DemoReferences
