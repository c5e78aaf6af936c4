#pragma once

#include "conversation/proposals/BuddyAction.h"
#include "foundation/Calendar.h"
#include "tools/MemoryToolCall.h"
#include "wire/LLMMessage.h"

#include <map>
#include <vector>

/// The messages that a turn sends to the model between its replies.
namespace pobblewig::ChatTurnLogic {

/// The number of rounds of tools before the answer.
inline constexpr int maxRounds = 3;

/// More calls in one reply are an error of the model; the rest is ignored.
inline constexpr size_t maxCallsPerReply = 64;

/// The calls that read, in their order. Broken calls are not run.
std::vector<MemoryToolCall> retrievalCalls(const std::vector<LLMToolCall>& calls);

/// The results of a round as function results, one message for each call, including actions.
/// `results` are those of the other calls, in order.
std::vector<LLMMessage> toolMessages(const std::vector<LLMToolCall>& calls,
    const std::vector<MemoryToolResult>& results,
    const std::map<QString, bool>& actionConfirmations, const Calendar& calendar);

/// The same as prose, for a model without function calls.
QString toolResultsText(const std::vector<MemoryToolResult>& results, int round);

/// The outcome of an action call.
QString actionAcknowledgement(const LLMToolCall& toolCall,
    const std::map<QString, bool>& actionConfirmations, const Calendar& calendar);

/// Whether a reply claims that something awaits the user's confirmation.
bool claimsActionWithoutCalling(const QString& text);

extern const QStringView claimNudge;
extern const QStringView emptyReplyNudge;
extern const QStringView screenshotAttached;

/// The names of the tools, with failures marked.
std::vector<QString> outcomeNames(const std::vector<MemoryToolResult>& results);

} // namespace pobblewig::ChatTurnLogic
