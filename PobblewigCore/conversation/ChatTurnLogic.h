#pragma once

#include "conversation/proposals/BuddyAction.h"
#include "foundation/Calendar.h"
#include "tools/MemoryToolCall.h"
#include "wire/LLMMessage.h"

#include <map>
#include <vector>

/// What a turn says to the model between its replies.
namespace pobblewig::ChatTurnLogic {

/// So many rounds of tools may come before the answer.
inline constexpr int maxRounds = 3;

/// More calls than this in one reply are a fault of the model's; the rest is not looked at.
inline constexpr size_t maxCallsPerReply = 64;

/// Those that read, in their order.
std::vector<MemoryToolCall> retrievalCalls(const std::vector<LLMToolCall>& calls);

/// The results of a round, in the terms of function calls: one message for each call, action calls
/// included. `results` are those of the others, in order.
std::vector<LLMMessage> toolMessages(const std::vector<LLMToolCall>& calls,
    const std::vector<MemoryToolResult>& results,
    const std::map<QString, bool>& actionConfirmations, const Calendar& calendar);

/// The same in prose, for a model without functions.
QString toolResultsText(const std::vector<MemoryToolResult>& results, int round);

/// What became of an action call.
QString actionAcknowledgement(const LLMToolCall& toolCall,
    const std::map<QString, bool>& actionConfirmations, const Calendar& calendar);

/// Whether a reply speaks as if something waited for the user's word.
bool claimsActionWithoutCalling(const QString& text);

extern const QStringView claimNudge;
extern const QStringView emptyReplyNudge;
extern const QStringView screenshotAttached;

/// The names, marked where the call failed.
std::vector<QString> outcomeNames(const std::vector<MemoryToolResult>& results);

} // namespace pobblewig::ChatTurnLogic
