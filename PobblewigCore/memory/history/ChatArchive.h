#pragma once

#include "foundation/Calendar.h"
#include "foundation/DataDirectory.h"
#include "memory/history/ChatMessage.h"

#include <vector>

/// Finished conversations, each in a file of its own.
namespace pobblewig::ChatArchive {

inline constexpr int retentionDays = 365;

/// Writes "chat-{dayKey}-{first 8 characters of the session's UUID}.json".
tl::expected<void, FileError> write(const DataDirectory& directory,
    const std::vector<ChatMessage>& messages, const QString& dayKey, const QUuid& sessionID);

/// Removes the archives of days more than `retentionDays` ago. A name without a day stays.
void sweepChatArchives(const DataDirectory& directory, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::ChatArchive
