#pragma once

#include "memory/history/ChatMessage.h"

#include <optional>
#include <vector>

/// The part of the conversation that a request contains.
///
/// Its beginning stays for several turns, even while the history loses its oldest messages: a
/// server reuses what it computed only as long as requests begin alike.
namespace pobblewig::ConversationWindow {

/// The number of messages that leave the window at once.
inline constexpr size_t step = 10;

/// The index of the first message of the next request. `previous` is the first message of the
/// request before, or nothing for the first request. As long as the history has it, the window
/// begins there.
size_t begin(const std::vector<ChatMessage>& history, std::optional<QUuid> previous);

} // namespace pobblewig::ConversationWindow
