#include "conversation/ContextLogic.h"

#include <algorithm>
#include <numeric>
#include <ranges>

namespace pobblewig {

namespace {

using Role = LLMMessage::Role;

size_t lengthOf(const LLMMessage& message)
{
    return size_t(message.content.size());
}

/// What remains begins with a message of the user, which some models insist on.
size_t olderHalf(const std::vector<LLMMessage>& messages, size_t newest)
{
    const auto history = messages | std::views::take(newest) | std::views::drop(1);
    auto lengths = history | std::views::transform(lengthOf);
    const auto whole = std::accumulate(lengths.begin(), lengths.end(), size_t(0));
    size_t count = 0;
    for (size_t length = 0; count < newest - 1; ++count) {
        if (2 * length >= whole && count > 0 && messages[1 + count].role == Role::user)
            break;
        length += lengthOf(messages[1 + count]);
    }
    return count;
}

} // namespace

ContextLogic::Part ContextLogic::oldestPart(const std::vector<LLMMessage>& messages, size_t newest)
{
    if (newest > 1)
        return { 1, olderHalf(messages, newest) };
    const auto rounds = messages | std::views::drop(newest + 1);
    const auto isRound = [](const auto& message) { return message.role == Role::assistant; };
    const auto last = std::ranges::find_if(rounds | std::views::reverse, isRound);
    if (last == std::ranges::rend(rounds))
        return {};
    return { newest + 1, size_t(std::distance(rounds.begin(), last.base()) - 1) };
}

} // namespace pobblewig
