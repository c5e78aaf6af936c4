#pragma once

#include "memory/history/ChatHistoryStore.h"
#include "memory/librarian/LibrarianService.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// Counts the turns of the conversation and hands them to the librarian in batches.
class ReadingAlong {
public:
    static constexpr int extractionIntervalTurns = 14;

    struct Dependencies {
        SettingsStore& settings;
        ChatHistoryStore& history;
        MemoryTiers& memory;
        LibrarianService& librarian;
        std::function<Task<QString>()> situation;
    };

    explicit ReadingAlong(Dependencies dependencies);

    /// To be awaited in the background: it may take as long as a model does.
    Task<> afterChatTurn();

    /// The tail of the conversation, before a day closes. A failed batch is not tried again. After
    /// a launch that is all of it: better read twice than never, by users who quit every evening.
    Task<> extractPendingTurns();

private:
    /// What has been said so far is not offered any more.
    void passOver();

    Dependencies m;
    int m_turnsSinceExtraction = 0;
    std::optional<QUuid> m_lastExtractedMessageID;
};

} // namespace pobblewig
