#pragma once

#include "foundation/DataDirectory.h"
#include "foundation/Moment.h"
#include "foundation/Task.h"
#include "memory/MemoryTiers.h"
#include "memory/history/ChatHistoryStore.h"

#include <stop_token>

namespace pobblewig {

/// A conversation that the user can read again.
struct PastConversation {
    /// The name of the archive; empty for the current conversation.
    QString name;
    QDate day;
    int messageCount = 0;
    /// The first line of the day's summary, or else of what the user said first.
    QString line;
    /// The first message that a search has found.
    std::optional<QUuid> match = std::nullopt;

    bool operator==(const PastConversation&) const = default;
};

/// The archived conversations and the current one. Archives are read beside the event loop, one
/// after the other, so a year of them takes little memory.
///
/// Lives on the main thread, as long as the process.
class ConversationLibrary {
public:
    using Messages = std::vector<ChatMessage>;

    /// Everything here must outlive the library, which has no archives without a directory.
    ConversationLibrary(const ChatHistoryStore& history, const MemoryTiers& memory,
        const Moment& moment, std::optional<DataDirectory> directory);

    /// The conversations in which a message contains every word, case and accents aside; all of
    /// them for a blank text. Newest first. Nothing if it is stopped.
    Task<std::vector<PastConversation>> find(QString wanted, std::stop_token stop) const;

    /// Empty if there is no such conversation, or no way to read it.
    Task<Messages> read(QString name) const;

    /// Deletes an archive, and nothing else of that day. Returns whether it is gone.
    bool remove(const QString& name);

private:
    QString firstLine(const QUuid& session) const;

    const ChatHistoryStore& m_history;
    const MemoryTiers& m_memory;
    const Moment& m_moment;
    std::optional<DataDirectory> m_directory;
};

} // namespace pobblewig
