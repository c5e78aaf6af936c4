#include "memory/librarian/ReadingAlong.h"

#include <algorithm>

namespace pobblewig {

namespace {

std::optional<QUuid> keptMark(const DailySessionStore& sessions)
{
    const auto session = sessions.activeSession();
    return session ? session->lastExtractedMessageID : std::nullopt;
}

} // namespace

ReadingAlong::ReadingAlong(
    const Stores& stores, LibrarianService& librarian, std::function<QString()> situation)
    : m_settings(stores.settings)
    , m_history(stores.history)
    , m_memory(stores.memory)
    , m_librarian(librarian)
    , m_situation(std::move(situation))
    , m_lastExtractedMessageID(keptMark(m_memory.sessions))
{
}

Task<> ReadingAlong::afterChatTurn()
{
    if (!isMemoryEnabled()) {
        passOver();
        keepMark();
        co_return;
    }
    ++m_turnsSinceExtraction;
    if (m_turnsSinceExtraction >= extractionIntervalTurns)
        co_await extractPendingTurns();
}

bool ReadingAlong::isPressing() const
{
    const auto messages = unread();
    if (!isMemoryEnabled() || messages.size() < mostUnread)
        return false;
    return messages.back().role != ChatMessage::Role::user
        || messages.size() >= ChatHistoryStore::maxMessages;
}

Task<> ReadingAlong::extractPendingTurns()
{
    if (!isMemoryEnabled()) {
        passOver();
        keepMark();
        co_return;
    }
    auto window = unread();
    if (!LibrarianLogic::hasReadableUserMessage(window))
        co_return;
    // Before the first co_await, so that no message is passed on twice.
    passOver();
    ++m_batchesUnderWay;
    co_await m_librarian.extractAfterTurn(std::move(window), m_situation(),
        m_memory.reference.tableOfContents().paths(), m_settings.settings().roles);
    if (--m_batchesUnderWay == 0)
        keepMark();
    // The end of a session does not wait for it.
    spawn(m_librarian.cleanupIfNeeded());
}

void ReadingAlong::passBackTo(const QUuid& message)
{
    const auto& messages = m_history.messages();
    const auto first = std::ranges::find(messages, message, &ChatMessage::id);
    const auto wasRead = std::any_of(first, messages.end(),
        [this](const auto& later) { return later.id == m_lastExtractedMessageID; });
    if (!wasRead)
        return;
    m_lastExtractedMessageID =
        first == messages.begin() ? std::nullopt : std::optional(std::prev(first)->id);
    if (m_batchesUnderWay == 0)
        keepMark();
}

std::vector<ChatMessage> ReadingAlong::unread() const
{
    return LibrarianLogic::messagesAfter(m_history.messages(), m_lastExtractedMessageID);
}

void ReadingAlong::passOver()
{
    m_turnsSinceExtraction = 0;
    if (!m_history.messages().empty())
        m_lastExtractedMessageID = m_history.messages().back().id;
}

void ReadingAlong::keepMark()
{
    if (m_lastExtractedMessageID)
        m_memory.sessions.markExtracted(*m_lastExtractedMessageID);
}

} // namespace pobblewig
