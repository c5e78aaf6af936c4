#pragma once

#include "settings/AssistantRole.h"

#include <QString>

#include <set>
#include <vector>

namespace pobblewig {

/// A stretch of conversation as the librarian reads it.
struct ExtractionPrompt {
    /// The durable notes as the chat sees them; empty if there are none.
    QString residentMemory;
    bool isBelowSoftTarget = true;
    QString situation;
    /// One line for each message.
    QString window;
    /// The confirmed reference sections.
    std::vector<QString> referencePaths;
    std::set<AssistantRole> roles = {};
};

struct MeetingNotesPrompt {
    QString appName;
    int minutes = 0;
    QString notes;
    QString residentMemory;
    bool isBelowSoftTarget = true;
    std::vector<QString> referencePaths = {};
};

/// The day's material, one line for each entry. The prompt says so where something is empty.
struct DailyCloseoutPrompt {
    QString dayKey;
    std::vector<QString> previousIntent;
    QString observations;
    QString activitySummary;
    QString conversation;
};

/// The librarian's prompts. Each is a single message that asks for JSON.
namespace Prompts {

QString extraction(const ExtractionPrompt& prompt);
QString meetingNotesExtraction(const MeetingNotesPrompt& prompt);
QString dailyCloseout(const DailyCloseoutPrompt& prompt);

/// `dailies` is the daily summaries, in order.
QString weeklyRollup(const QString& dailies);

/// `memoryJSON` is a portion of the notes or of the patterns, as the store keeps them.
QString cleanup(const QString& memoryJSON);

} // namespace Prompts

} // namespace pobblewig
