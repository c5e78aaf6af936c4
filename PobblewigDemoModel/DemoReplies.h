#pragma once

#include "PobblewigDemoModel/ChatRequest.h"

#include <QString>
#include <QTime>

namespace pobblewig {

/// What the demo model will say.
struct DemoReply {
    QString text;
};

/// What stands in for an AI: a short list of rules, asked in order, of which the first that fits
/// answers.
namespace DemoReplies {

/// The first reply of a conversation says what the demo model is and how to get a real one. A
/// request with a response format gets an answer of that format and nothing else.
DemoReply reply(const ChatRequest& request, QTime now);

} // namespace DemoReplies

} // namespace pobblewig
