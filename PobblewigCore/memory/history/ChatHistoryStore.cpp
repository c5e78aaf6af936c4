#include "memory/history/ChatHistoryStore.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace pobblewig {

ChatHistoryStore::ChatHistoryStore(const std::optional<DataDirectory>& directory)
    : m_file(directory, QStringLiteral("chat.json"), QStringLiteral("chat"))
    , m_messages(m_file.load<std::vector<ChatMessage>>())
{
    trim();
}

void ChatHistoryStore::append(ChatMessage message)
{
    m_messages.push_back(std::move(message));
    trim();
    m_file.save(m_messages);
}

void ChatHistoryStore::update(const QUuid& id, const QString& text)
{
    const auto message = std::ranges::find(m_messages, id, &ChatMessage::id);
    if (message == m_messages.end())
        return;
    message->text = text;
    m_file.save(m_messages);
}

void ChatHistoryStore::clear()
{
    m_messages.clear();
    m_file.save(m_messages);
}

void ChatHistoryStore::adopt(const QUuid& sessionID)
{
    for (auto& message : m_messages)
        message.sessionID = message.sessionID.value_or(sessionID);
    m_file.save(m_messages);
}

void ChatHistoryStore::remove(const std::vector<ChatMessage>& messages)
{
    std::set<QUuid> ids;
    std::ranges::transform(messages, std::inserter(ids, ids.end()), &ChatMessage::id);
    std::erase_if(m_messages, [&](const auto& message) { return ids.contains(message.id); });
    m_file.save(m_messages);
}

void ChatHistoryStore::readAgain()
{
    auto kept = m_file.loadAgain<std::vector<ChatMessage>>();
    if (!kept)
        return;
    std::ranges::move(m_messages, std::back_inserter(*kept));
    m_messages = *std::move(kept);
    trim();
    m_file.save(m_messages);
}

void ChatHistoryStore::trim()
{
    if (std::ssize(m_messages) > std::ptrdiff_t(maxMessages))
        m_messages.erase(m_messages.begin(), m_messages.end() - std::ptrdiff_t(maxMessages));
}

} // namespace pobblewig
