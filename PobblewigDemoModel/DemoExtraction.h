#pragma once

#include "PobblewigDemoModel/DemoFinding.h"

#include <QDateTime>
#include <QStringList>

/// Finds what is worth remembering, by rules.
namespace pobblewig::DemoExtraction {

/// Reads the user's statements in the conversation of a prompt. Ignores what others say and what is
/// already remembered.
JSONValue fromConversation(const QString& prompt, const QDateTime& now);

/// Reads dates and decisions in the lines of a meeting's notes.
JSONValue fromMeeting(const QString& prompt, const QDateTime& now);

/// Everything worth remembering in a statement.
DemoFindings findingsIn(const QString& statement, const QDateTime& now, const QStringList& paths);

} // namespace pobblewig::DemoExtraction
