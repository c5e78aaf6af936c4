#pragma once

#include "memory/history/ChatMessage.h"

#include <optional>
#include <vector>

/// What the user can have answered again or ask in other words. All lists are a whole conversation,
/// oldest message first.
namespace pobblewig::RevisionLogic {

/// So many earlier answers stay with a reply.
inline constexpr size_t mostEarlier = 5;

struct Exchange {
    ChatMessage question;
    ChatMessage reply;
};

/// The last exchange, if its question can be answered again: nothing follows the reply, and the
/// question came without a picture or a file, which would now be missing.
std::optional<Exchange> answerableAgain(const std::vector<ChatMessage>& messages);

/// The newest question of the user, unless it came with a picture or a file.
std::optional<ChatMessage> changeableQuestion(const std::vector<ChatMessage>& messages);

/// What goes with this question when another takes its place: the question and all that followed,
/// except what the buddy said unasked. Empty for an unknown id.
std::vector<ChatMessage> takenBackWith(
    const QUuid& question, const std::vector<ChatMessage>& messages);

/// `next` in the place of `previous`, whose text joins the earlier answers.
ChatMessage inPlaceOf(const ChatMessage& previous, ChatMessage next);

} // namespace pobblewig::RevisionLogic
