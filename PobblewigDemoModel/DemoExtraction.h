#pragma once

#include "PobblewigDemoModel/DemoFinding.h"

#include <QDateTime>
#include <QStringList>

/// What is worth remembering, by rules.
namespace pobblewig::DemoExtraction {

/// Of what the user states in the conversation window of a prompt. What others say there, or what
/// is remembered already, counts for nothing.
JSONValue fromConversation(const QString& prompt, const QDateTime& now);

/// Of the lines of a meeting's notes: dates and decisions.
JSONValue fromMeeting(const QString& prompt, const QDateTime& now);

/// All that a statement holds.
DemoFindings findingsIn(const QString& statement, const QDateTime& now, const QStringList& paths);

} // namespace pobblewig::DemoExtraction
