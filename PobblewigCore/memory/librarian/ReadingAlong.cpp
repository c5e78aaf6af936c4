#include "memory/librarian/ReadingAlong.h"

namespace pobblewig {

ReadingAlong::ReadingAlong(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

Task<> ReadingAlong::afterChatTurn()
{
    if (!m.settings.settings().memoryEnabled) {
        passOver();
        co_return;
    }
    ++m_turnsSinceExtraction;
    if (m_turnsSinceExtraction >= extractionIntervalTurns)
        co_await extractPendingTurns();
    co_await m.librarian.cleanupIfNeeded();
}

Task<> ReadingAlong::extractPendingTurns()
{
    if (!m.settings.settings().memoryEnabled)
        passOver();
    if (m_turnsSinceExtraction < 1 && m_lastExtractedMessageID)
        co_return;
    auto window = LibrarianLogic::messagesAfter(m.history.messages(), m_lastExtractedMessageID);
    // Before anything is awaited, so that no message is offered twice.
    passOver();
    const auto situation = co_await m.situation();
    co_await m.librarian.extractAfterTurn(std::move(window), situation,
        m.memory.reference.tableOfContents().paths(), m.settings.settings().roles);
}

void ReadingAlong::passOver()
{
    m_turnsSinceExtraction = 0;
    if (!m.history.messages().empty())
        m_lastExtractedMessageID = m.history.messages().back().id;
}

} // namespace pobblewig
