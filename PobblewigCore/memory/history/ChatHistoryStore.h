#pragma once

#include "foundation/StoreFile.h"
#include "memory/history/ChatMessage.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// The latest 30 messages of the conversation, oldest first, kept in "chat.json".
///
/// Lives on the main thread. Without a directory it works in memory only.
class ChatHistoryStore {
public:
    static constexpr size_t maxMessages = 30;

    explicit ChatHistoryStore(const std::optional<DataDirectory>& directory);

    const std::vector<ChatMessage>& messages() const { return m_messages; }

    void append(ChatMessage message);

    /// An unknown id changes nothing.
    void update(const QUuid& id, const QString& text);
    void clear();

    /// Assigns the messages without a session to this one.
    void adopt(const QUuid& sessionID);

    /// Ignores unknown ids.
    void remove(const std::vector<ChatMessage>& messages);

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    void trim();

    StoreFile m_file;
    std::vector<ChatMessage> m_messages;
};

} // namespace pobblewig
