#pragma once

#include "foundation/StoreFile.h"
#include "memory/history/DraftStore.h"
#include "memory/history/Transcript.h"
#include "settings/ConversationKeeping.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// The conversation: all of it since the last archive (`Transcript`), and its latest 30 messages,
/// which a model reads, kept in "chat.json". Every change reaches both. And what the user has begun
/// to write.
///
/// Lives on the main thread. Without a directory it works in memory only.
class ChatHistoryStore {
public:
    static constexpr size_t maxMessages = Transcript::mostUnwritten;

    /// What only one of the two files has, after a crash or from an earlier version, is taken over
    /// into both.
    explicit ChatHistoryStore(const std::optional<DataDirectory>& directory);

    /// The latest messages, oldest first.
    const std::vector<ChatMessage>& messages() const { return m_window; }

    /// All messages, oldest first.
    const std::vector<ChatMessage>& transcript() const { return m_transcript.messages(); }

    DraftStore& draft() { return m_draft; }

    void append(const ChatMessage& message);

    /// An unknown id changes nothing.
    void update(const QUuid& id, const QString& text);

    /// Puts a message in the place of the one with its id. An unknown id changes nothing.
    void replace(const ChatMessage& message);

    /// Leaves no message and no draft.
    void clear();

    /// Assigns the messages without a session to this one.
    void adopt(const QUuid& sessionID);

    /// Ignores unknown ids.
    void remove(const std::vector<ChatMessage>& messages);

    /// Removes the messages that are kept no longer. Returns whether there were any.
    bool sweep(ConversationKeeping keeping, TimePoint now);

    /// Tries again to read what could not be read at the start.
    void readAgain();

private:
    void change(const std::function<void(std::vector<ChatMessage>& messages)>& change);
    void takeWindow();
    void save();

    StoreFile m_file;
    std::vector<ChatMessage> m_window;
    Transcript m_transcript;
    DraftStore m_draft;
};

} // namespace pobblewig
