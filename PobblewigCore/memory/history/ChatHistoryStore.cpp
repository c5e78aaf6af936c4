#include "memory/history/ChatHistoryStore.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace pobblewig {

ChatHistoryStore::ChatHistoryStore(const std::optional<DataDirectory>& directory)
    : m_file(directory, QStringLiteral("chat.json"), QStringLiteral("chat"))
    , m_window(m_file.load<std::vector<ChatMessage>>())
    , m_transcript(directory)
    , m_draft(directory)
{
    // The window is written first, so it is never older than the transcript.
    m_transcript.edit([this](auto& messages) { Transcript::merge(messages, m_window); });
    takeWindow();
}

void ChatHistoryStore::append(const ChatMessage& message)
{
    m_window.push_back(message);
    if (m_window.size() > maxMessages)
        m_window.erase(m_window.begin());
    m_file.save(m_window);
    m_transcript.append(message);
}

void ChatHistoryStore::update(const QUuid& id, const QString& text)
{
    const auto isThere = [&id](const auto& message) { return message.id == id; };
    if (std::ranges::none_of(transcript(), isThere))
        return;
    change([&](auto& messages) { std::ranges::find_if(messages, isThere)->text = text; });
}

void ChatHistoryStore::replace(const ChatMessage& message)
{
    change([&message](auto& messages) {
        std::ranges::replace_if(
            messages, [&](const auto& kept) { return kept.id == message.id; }, message);
    });
}

void ChatHistoryStore::clear()
{
    change([](auto& messages) { messages.clear(); });
    m_draft.setText({});
}

void ChatHistoryStore::adopt(const QUuid& sessionID)
{
    change([&sessionID](auto& messages) {
        for (auto& message : messages)
            message.sessionID = message.sessionID.value_or(sessionID);
    });
}

void ChatHistoryStore::remove(const std::vector<ChatMessage>& messages)
{
    std::set<QUuid> ids;
    std::ranges::transform(messages, std::inserter(ids, ids.end()), &ChatMessage::id);
    change([&ids](auto& kept) {
        std::erase_if(kept, [&ids](const auto& message) { return ids.contains(message.id); });
    });
}

bool ChatHistoryStore::sweep(ConversationKeeping keeping, TimePoint now)
{
    const auto& all = transcript();
    const auto oldest = now - std::chrono::days(daysKept(keeping));
    const auto isKept = [&oldest](const auto& message) { return message.timestamp >= oldest; };
    const auto first = keeping == ConversationKeeping::lastMessages
        ? all.end() - std::ptrdiff_t(m_window.size())
        : std::ranges::find_if(all, isKept);
    const auto count = first - all.begin();
    if (count == 0)
        return false;
    change([count](auto& messages) { messages.erase(messages.begin(), messages.begin() + count); });
    return true;
}

void ChatHistoryStore::readAgain()
{
    const auto window = m_file.loadAgain<std::vector<ChatMessage>>();
    auto all = m_transcript.loadAgain();
    if (!window && !all)
        return;
    auto joined = all ? *std::move(all) : transcript();
    if (window)
        Transcript::merge(joined, *window);
    Transcript::merge(joined, transcript());
    change([&joined](auto& messages) { messages = std::move(joined); });
}

void ChatHistoryStore::change(const std::function<void(std::vector<ChatMessage>& messages)>& change)
{
    m_transcript.edit(change);
    takeWindow();
    save();
}

void ChatHistoryStore::takeWindow()
{
    const auto& all = transcript();
    const auto count = std::min(all.size(), maxMessages);
    m_window.assign(all.end() - std::ptrdiff_t(count), all.end());
}

void ChatHistoryStore::save()
{
    m_file.save(m_window);
    m_transcript.save();
}

} // namespace pobblewig
