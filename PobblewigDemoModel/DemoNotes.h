#pragma once

#include "PobblewigDemoModel/DemoFinding.h"

#include <QDateTime>

#include <optional>

/// What a statement says about the user.
namespace pobblewig::DemoNotes {

/// A preference, goal, fact or correction; all of them in the user's own words.
std::optional<DemoFinding> noteIn(const QString& statement, const QDateTime& now);

/// A state or an event of the day, with tags.
std::optional<DemoFinding> observationIn(const QString& statement);

} // namespace pobblewig::DemoNotes
