#pragma once

#include "PobblewigDemoModel/ChatRequest.h"
#include "PobblewigDemoModel/DemoToolCall.h"

#include <QDateTime>
#include <QString>

#include <vector>

namespace pobblewig {

/// The text and the calls of the demo model.
struct DemoReply {
    QString text;
    std::vector<DemoToolCall> calls = {};
};

/// Replaces an AI by a short list of rules, of which the first that fits answers. Keeps nothing
/// between requests: the conversation tells which calls of a plan are still due.
namespace DemoReplies {

/// The first answer of a conversation says what the demo model is and how to get a real one. A
/// request with a response format gets only that format: the emptiest value, except for the app's
/// requests about its memory.
DemoReply reply(const ChatRequest& request, const QDateTime& now);

} // namespace DemoReplies

} // namespace pobblewig
