#pragma once

#include "PobblewigDemoModel/DemoFinding.h"

#include <QDateTime>

#include <optional>

/// Reads what a statement says about the user.
namespace pobblewig::DemoNotes {

/// A preference, goal, fact or correction, always as the user's explicit statement.
std::optional<DemoFinding> noteIn(const QString& statement, const QDateTime& now);

/// A current state or event, with tags.
std::optional<DemoFinding> observationIn(const QString& statement);

} // namespace pobblewig::DemoNotes
