#pragma once

#include "conversation/proposals/BuddyAction.h"
#include "foundation/Calendar.h"
#include "tools/MemoryToolCall.h"
#include "wire/LLMMessage.h"

#include <optional>
#include <vector>

/// Extracts from a model's reply the actions that it asks for and the text that the user reads. A
/// model asks by calling a function or, if its server supports none, by a fenced JSON block at the
/// end of its reply; both lead to the same actions.
///
/// Never fails: what cannot be understood is not an action. Proposals have no `id` and `createdAt`
/// yet. A time without a zone is in the calendar's zone.
namespace pobblewig::ActionParser {

struct ParseResult {
    QString displayText;
    std::vector<BuddyAction> actions;
    /// Whether a control block was there that yields neither an action nor a look-up.
    bool isMalformed = false;
};

/// Parses a complete reply.
ParseResult parse(const QString& text, const Calendar& calendar);

struct ToolRequest {
    /// The text before the block, or nothing if there is none.
    std::optional<QString> displayText;
    std::vector<MemoryToolCall> calls;
};

ToolRequest parseToolCalls(const QString& text);

/// Empty if the call is not usable. A change of both mascot and colours is two actions.
std::vector<BuddyAction> actions(const LLMToolCall& toolCall, const Calendar& calendar);

/// Removes all control blocks.
QString stripControlFences(const QString& text);

/// Cuts the text at a control block that has not ended.
QString stripPartialFence(const QString& text);

/// The part of an incoming reply that may be shown; `ReplyPreview` does this at less cost.
QString sanitizeForPreview(const QString& text);

} // namespace pobblewig::ActionParser
