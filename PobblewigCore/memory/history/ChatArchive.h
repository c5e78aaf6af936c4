#pragma once

#include "foundation/Calendar.h"
#include "foundation/DataDirectory.h"
#include "memory/history/ChatMessage.h"
#include "settings/ConversationKeeping.h"

#include <vector>

/// Finished conversations, each in its own file.
namespace pobblewig::ChatArchive {

/// Writes a session's archive. If a crash has left that file already, adds the messages to it.
tl::expected<void, FileError> write(const DataDirectory& directory,
    const std::vector<ChatMessage>& messages, const QString& dayKey, const QUuid& sessionID);

/// "chat-{dayKey}-{first 8 characters of the session's UUID}.json".
QString name(const QString& dayKey, const QUuid& sessionID);

/// The names of the archives, newest first.
QStringList names(const QDir& directory);

/// The day in an archive's name; invalid for other names, and for every path.
QDate day(const QString& fileName);

/// For any thread. Leaves the file as it is; empty if it cannot be read.
std::vector<ChatMessage> read(const QString& path);

/// Removes the archives that are kept no longer, by the day in their name. Files without a day
/// stay.
void sweepChatArchives(const DataDirectory& directory, TimePoint now, const Calendar& calendar,
    ConversationKeeping keeping = ConversationKeeping::year);

} // namespace pobblewig::ChatArchive
