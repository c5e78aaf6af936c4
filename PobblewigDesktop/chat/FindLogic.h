#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"
#include "PobblewigDesktop/chat/ConversationRow.h"

#include <functional>
#include <vector>

namespace pobblewig::FindLogic {

/// Returns what a row shows.
using ShownText = std::function<QString(const ConversationRow& row)>;

/// Finds the text in what the messages show, ignoring case, in the order of the conversation.
/// Titles of days and a growing reply are not searched.
std::vector<MessageRange> matches(
    const std::vector<ConversationRow>& rows, const QString& wanted, const ShownText& shownText);

/// Returns the match after `current` in this direction, wrapping around, or the latest one to begin
/// with.
std::optional<std::size_t> neighbour(
    const std::vector<MessageRange>& matches, const std::optional<MessageRange>& current, int step);

} // namespace pobblewig::FindLogic
