#pragma once

#include "memory/history/ChatHistoryStore.h"
#include "memory/librarian/LibrarianService.h"

namespace pobblewig {

/// Counts the turns of the conversation and passes them to the librarian in batches.
class ReadingAlong {
public:
    static constexpr int extractionIntervalTurns = 14;

    /// All arguments must outlive this object. `situation` is called for each batch.
    ReadingAlong(
        const Stores& stores, LibrarianService& librarian, std::function<QString()> situation);

    /// Run this in the background: it takes as long as the model.
    Task<> afterChatTurn();

    /// Reads the rest of the conversation before a day closes. A failed batch is not retried. After
    /// a launch the rest is the whole conversation, because for users who quit every evening it is
    /// better to read messages twice than never.
    Task<> extractPendingTurns();

private:
    /// Skips everything said so far.
    void passOver();
    bool isMemoryEnabled() const { return m_settings.settings().memoryEnabled; }

    const SettingsStore& m_settings;
    const ChatHistoryStore& m_history;
    const MemoryTiers& m_memory;
    LibrarianService& m_librarian;
    std::function<QString()> m_situation;
    int m_turnsSinceExtraction = 0;
    std::optional<QUuid> m_lastExtractedMessageID;
};

} // namespace pobblewig
