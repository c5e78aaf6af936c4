#pragma once

#include "conversation/proposals/ActionVerdict.h"
#include "conversation/proposals/BuddyAction.h"
#include "tools/MemoryToolCall.h"
#include "wire/LLMMessage.h"

#include <QStringList>

#include <vector>

/// The messages that a turn sends to the model between its replies.
namespace pobblewig::ChatTurnLogic {

/// The number of rounds of tools before the answer.
inline constexpr int maxRounds = 3;

/// More calls in one reply are an error of the model; the rest is ignored.
inline constexpr size_t maxCallsPerReply = 64;

/// The calls that read, in their order. Broken calls are not run.
std::vector<MemoryToolCall> retrievalCalls(const std::vector<LLMToolCall>& calls);

/// The results of a round as function results, one message for each call. `acknowledgements` are
/// those of the actions and `results` those of the other calls, each in order.
std::vector<LLMMessage> toolMessages(const std::vector<LLMToolCall>& calls,
    const std::vector<MemoryToolResult>& results, const std::vector<QString>& acknowledgements);

/// The same as prose, for a model without function calls.
QString toolResultsText(const std::vector<MemoryToolResult>& results, int round);

/// What the model is told of the actions of one call: the truth at that moment.
QString acknowledgement(
    const std::vector<BuddyAction>& actions, const std::vector<ActionVerdict>& verdicts);

/// Whether a reply claims that something awaits the user's confirmation.
bool claimsActionWithoutCalling(const QString& text);

/// Names the functions among those that are offered.
QString claimNudge(const QStringList& offered);
extern const QStringView blockNudge;
extern const QStringView emptyReplyNudge;
extern const QStringView screenshotAttached;

/// The names of the tools, with failures marked.
std::vector<QString> outcomeNames(const std::vector<MemoryToolResult>& results);

} // namespace pobblewig::ChatTurnLogic
