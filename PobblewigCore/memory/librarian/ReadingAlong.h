#pragma once

#include "memory/history/ChatHistoryStore.h"
#include "memory/librarian/LibrarianService.h"

namespace pobblewig {

/// Passes the conversation to the librarian in batches: after so many turns, or when so many
/// messages are unread that the history might let go of one.
class ReadingAlong {
public:
    static constexpr int extractionIntervalTurns = 14;
    static constexpr size_t mostUnread = 26;

    /// All arguments must outlive this object. `situation` is called for each batch.
    ReadingAlong(
        const Stores& stores, LibrarianService& librarian, std::function<QString()> situation);

    /// Run this in the background: it takes as long as the model.
    Task<> afterChatTurn();

    /// Whether the unread messages are to be read now, since the history has little room left. A
    /// message of the user waits for its reply while there is room for one.
    bool isPressing() const;

    /// Reads what the user said since the last batch, and all around it. A failed batch is not
    /// retried. What was being read when the program ended is read again.
    Task<> extractPendingTurns();

    /// This message and those after it are about to leave the history. What stays is not read
    /// twice.
    void passBackTo(const QUuid& message);

private:
    std::vector<ChatMessage> unread() const;
    /// Skips everything said so far.
    void passOver();
    /// The next launch begins to read after what was passed over.
    void keepMark();
    bool isMemoryEnabled() const { return m_settings.settings().memoryEnabled; }

    const SettingsStore& m_settings;
    const ChatHistoryStore& m_history;
    MemoryTiers& m_memory;
    LibrarianService& m_librarian;
    std::function<QString()> m_situation;
    int m_turnsSinceExtraction = 0;
    int m_batchesUnderWay = 0;
    std::optional<QUuid> m_lastExtractedMessageID;
};

} // namespace pobblewig
