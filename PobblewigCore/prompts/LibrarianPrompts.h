#pragma once

#include "settings/AssistantRole.h"

#include <QString>

#include <set>
#include <vector>

namespace pobblewig {

/// What the librarian reads of a stretch of conversation.
struct ExtractionPrompt {
    /// The durable notes as the chat sees them; empty without any.
    QString residentMemory;
    bool isBelowSoftTarget = true;
    QString situation;
    /// A line for each message.
    QString window;
    /// The confirmed sections.
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

/// The day's material, a line for each entry; what is empty is said to be missing.
struct DailyCloseoutPrompt {
    QString dayKey;
    std::vector<QString> previousIntent;
    QString observations;
    QString activitySummary;
    QString conversation;
};

/// What the librarian is asked, each a single message that wants JSON for an answer.
namespace Prompts {

QString extraction(const ExtractionPrompt& prompt);
QString meetingNotesExtraction(const MeetingNotesPrompt& prompt);
QString dailyCloseout(const DailyCloseoutPrompt& prompt);

/// `dailies` is the days' accounts in their order.
QString weeklyRollup(const QString& dailies);

/// `memoryJSON` is the notes and patterns as the store keeps them.
QString cleanup(const QString& memoryJSON);

} // namespace Prompts

} // namespace pobblewig
