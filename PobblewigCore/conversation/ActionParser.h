#pragma once

#include "conversation/proposals/BuddyAction.h"
#include "foundation/Calendar.h"
#include "tools/MemoryToolCall.h"
#include "wire/LLMMessage.h"

#include <optional>
#include <vector>

/// From what a model says to what it wants and what the user reads of it. A model asks by calling
/// a function or, where its server knows none, by a fenced JSON block at the end of its reply; both
/// ways lead to the same actions.
///
/// Nothing here fails: what cannot be understood is no action. Proposals come without `id` and
/// `createdAt`. A time without a zone is of the calendar's.
namespace pobblewig::ActionParser {

struct ParseResult {
    QString displayText;
    std::vector<BuddyAction> actions;
};

/// Of a whole reply.
ParseResult parse(const QString& text, const Calendar& calendar);

struct ToolRequest {
    /// What stands before the block; nothing if there is none.
    std::optional<QString> displayText;
    std::vector<MemoryToolCall> calls;
};

ToolRequest parseToolCalls(const QString& text);

/// None if the call is not usable. Becoming another form in other colours is two actions.
std::vector<BuddyAction> actions(const LLMToolCall& toolCall, const Calendar& calendar);

/// Without the control blocks, wherever they stand.
QString stripControlFences(const QString& text);

/// Up to a control block that has begun and not ended.
QString stripPartialFence(const QString& text);

/// What may be shown of a reply that is still arriving; `ReplyPreview` costs less there.
QString sanitizeForPreview(const QString& text);

} // namespace pobblewig::ActionParser
