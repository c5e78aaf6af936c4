#pragma once

#include "foundation/Calendar.h"
#include "foundation/DataDirectory.h"
#include "memory/history/ChatMessage.h"

#include <vector>

/// Finished conversations, each in its own file.
namespace pobblewig::ChatArchive {

inline constexpr int retentionDays = 365;

/// Writes "chat-{dayKey}-{first 8 characters of the session's UUID}.json".
tl::expected<void, FileError> write(const DataDirectory& directory,
    const std::vector<ChatMessage>& messages, const QString& dayKey, const QUuid& sessionID);

/// Removes archives of days more than `retentionDays` ago. Files without a day in their name stay.
void sweepChatArchives(const DataDirectory& directory, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::ChatArchive
