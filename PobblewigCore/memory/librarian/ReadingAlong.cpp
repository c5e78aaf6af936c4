#include "memory/librarian/ReadingAlong.h"

namespace pobblewig {

ReadingAlong::ReadingAlong(
    const Stores& stores, LibrarianService& librarian, std::function<QString()> situation)
    : m_settings(stores.settings)
    , m_history(stores.history)
    , m_memory(stores.memory)
    , m_librarian(librarian)
    , m_situation(std::move(situation))
{
}

Task<> ReadingAlong::afterChatTurn()
{
    if (!isMemoryEnabled()) {
        passOver();
        co_return;
    }
    ++m_turnsSinceExtraction;
    if (m_turnsSinceExtraction >= extractionIntervalTurns)
        co_await extractPendingTurns();
    co_await m_librarian.cleanupIfNeeded();
}

Task<> ReadingAlong::extractPendingTurns()
{
    if (!isMemoryEnabled())
        passOver();
    if (m_turnsSinceExtraction < 1 && m_lastExtractedMessageID)
        co_return;
    auto window = LibrarianLogic::messagesAfter(m_history.messages(), m_lastExtractedMessageID);
    // Before the first co_await, so that no message is passed on twice.
    passOver();
    co_await m_librarian.extractAfterTurn(std::move(window), m_situation(),
        m_memory.reference.tableOfContents().paths(), m_settings.settings().roles);
}

void ReadingAlong::passOver()
{
    m_turnsSinceExtraction = 0;
    if (!m_history.messages().empty())
        m_lastExtractedMessageID = m_history.messages().back().id;
}

} // namespace pobblewig
