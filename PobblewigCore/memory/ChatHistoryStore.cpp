#include "memory/ChatHistoryStore.h"

#include "foundation/Log.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr std::ptrdiff_t mostMessages = 30;

}

ChatHistoryStore::ChatHistoryStore(const std::optional<DataDirectory>& directory)
{
    if (!directory)
        return;
    m_file.emplace(*directory, QStringLiteral("chat.json"));
    m_messages = m_file->load<std::vector<ChatMessage>>().value_or(std::vector<ChatMessage>());
    trim();
}

void ChatHistoryStore::append(ChatMessage message)
{
    m_messages.push_back(std::move(message));
    trim();
    save();
}

void ChatHistoryStore::update(const QUuid& id, const QString& text)
{
    const auto message = std::ranges::find(m_messages, id, &ChatMessage::id);
    if (message == m_messages.end())
        return;
    message->text = text;
    save();
}

void ChatHistoryStore::clear()
{
    m_messages.clear();
    save();
}

void ChatHistoryStore::trim()
{
    if (std::ssize(m_messages) > mostMessages)
        m_messages.erase(m_messages.begin(), m_messages.end() - mostMessages);
}

void ChatHistoryStore::save() const
{
    if (!m_file)
        return;
    if (const auto saved = m_file->save(m_messages); !saved)
        Log::line(
            QStringLiteral("buddy: failed to persist chat: %1").arg(saved.error().description()));
}

} // namespace pobblewig
