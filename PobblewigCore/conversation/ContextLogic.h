#pragma once

#include "wire/LLMMessage.h"

#include <vector>

/// Which messages of a request can go when it is too long for the model.
namespace pobblewig::ContextLogic {

/// How often a request is shortened before it is given up.
inline constexpr int mostAttempts = 6;

/// Consecutive messages of a request.
struct Part {
    size_t first = 0;
    size_t count = 0;

    bool operator==(const Part&) const = default;
};

/// The messages to leave out next, by length about half of those before the newest message of the
/// user, which stands at `newest`. Then the turn's own rounds but the last, each of them with its
/// calls and their results. The first message, the system prompt, always stays. The part is empty
/// if nothing can go.
Part oldestPart(const std::vector<LLMMessage>& messages, size_t newest);

} // namespace pobblewig::ContextLogic
