#pragma once

#include "PobblewigDesktop/chat/ConversationMarks.h"
#include "PobblewigDesktop/chat/ConversationRow.h"

#include <vector>

namespace pobblewig::FindLogic {

/// Where the messages say this, upper and lower case aside, in the order of the conversation. Days
/// and a reply that is still growing are not searched.
std::vector<MessageRange> matches(const std::vector<ConversationRow>& rows, const QString& wanted);

/// The match to show after `current`: a neighbour, around the ends, or the latest to begin with.
std::optional<std::size_t> neighbour(
    const std::vector<MessageRange>& matches, const std::optional<MessageRange>& current, int step);

} // namespace pobblewig::FindLogic
