#pragma once

#include "PobblewigDemoModel/ChatRequest.h"
#include "PobblewigDemoModel/DemoToolCall.h"

#include <QDateTime>
#include <QString>

#include <vector>

namespace pobblewig {

/// What the demo model will say and call.
struct DemoReply {
    QString text;
    std::vector<DemoToolCall> calls = {};
};

/// What stands in for an AI: a short list of rules, asked in order, of which the first that fits
/// answers. Nothing is remembered between requests: which calls of a plan are still to be made, the
/// conversation tells.
namespace DemoReplies {

/// The first answer of a conversation says what the demo model is and how to get a real one. A
/// request with a response format gets an answer of that format and nothing else: the emptiest one,
/// unless it is one of the app's for its memory.
DemoReply reply(const ChatRequest& request, const QDateTime& now);

} // namespace DemoReplies

} // namespace pobblewig
