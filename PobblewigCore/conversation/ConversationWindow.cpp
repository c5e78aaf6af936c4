#include "conversation/ConversationWindow.h"

#include "memory/history/ChatHistoryStore.h"

#include <algorithm>

namespace pobblewig {

size_t ConversationWindow::begin(
    const std::vector<ChatMessage>& history, std::optional<QUuid> previous)
{
    if (!previous)
        return 0;
    const auto first = std::ranges::find(history, *previous, &ChatMessage::id);
    if (first != history.end())
        return size_t(first - history.begin());
    // A history that is not full was emptied, so there is nothing to leave out.
    if (history.size() < ChatHistoryStore::maxMessages)
        return 0;
    const auto question = std::ranges::find(
        history.begin() + step, history.end(), ChatMessage::Role::user, &ChatMessage::role);
    return size_t(question - history.begin());
}

} // namespace pobblewig
