#pragma once

#include "memory/history/ChatHistoryStore.h"
#include "memory/librarian/LibrarianService.h"

namespace pobblewig {

/// Counts the turns of the conversation and hands them to the librarian in batches.
class ReadingAlong {
public:
    static constexpr int extractionIntervalTurns = 14;

    /// All of it outlives the reading. `situation` is asked for each batch.
    ReadingAlong(const Stores& stores, LibrarianService& librarian,
        std::function<Task<QString>()> situation);

    /// Meant for the background: it may take as long as a model does.
    Task<> afterChatTurn();

    /// Reads the tail of the conversation, before a day closes. A failed batch is not tried again.
    /// After a launch the tail is the whole conversation: better read twice than never, for users
    /// who quit every evening.
    Task<> extractPendingTurns();

private:
    /// What has been said so far is not offered any more.
    void passOver();
    bool isMemoryEnabled() const { return m_settings.settings().memoryEnabled; }

    const SettingsStore& m_settings;
    const ChatHistoryStore& m_history;
    const MemoryTiers& m_memory;
    LibrarianService& m_librarian;
    std::function<Task<QString>()> m_situation;
    int m_turnsSinceExtraction = 0;
    std::optional<QUuid> m_lastExtractedMessageID;
};

} // namespace pobblewig
