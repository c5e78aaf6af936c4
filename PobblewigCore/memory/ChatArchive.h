#pragma once

#include "foundation/DataDirectory.h"
#include "memory/ChatMessage.h"

#include <vector>

/// Finished conversations, each in a file of its own.
namespace pobblewig::ChatArchive {

/// Writes "chat-{dayKey}-{first 8 characters of the session's UUID}.json".
tl::expected<void, FileError> write(const DataDirectory& directory,
    const std::vector<ChatMessage>& messages, const QString& dayKey, const QUuid& sessionID);

} // namespace pobblewig::ChatArchive
