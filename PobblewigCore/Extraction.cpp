#include "Extraction.h"

namespace pobblewig {

Extraction::Extraction(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

Task<> Extraction::afterChatTurn()
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

Task<> Extraction::extractPendingTurns()
{
    if (!m.settings.settings().memoryEnabled)
        passOver();
    if (m_turnsSinceExtraction < 1 && m_lastExtractedMessageID)
        co_return;
    auto window = LibrarianLogic::messagesAfter(m.history.messages(), m_lastExtractedMessageID);
    // Before anything is awaited, so that no message is offered twice.
    passOver();
    const auto situation = co_await m.situation();
    co_await m.librarian.extractAfterTurn(
        std::move(window), situation, confirmedPaths(), m.settings.settings().roles);
}

void Extraction::passOver()
{
    m_turnsSinceExtraction = 0;
    if (!m.history.messages().empty())
        m_lastExtractedMessageID = m.history.messages().back().id;
}

std::vector<QString> Extraction::confirmedPaths() const
{
    std::vector<QString> paths;
    for (const auto& entry : m.memory.reference.tableOfContents().entries)
        paths.push_back(entry.path);
    return paths;
}

} // namespace pobblewig
