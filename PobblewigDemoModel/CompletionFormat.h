#pragma once

#include "PobblewigDemoModel/ChatRequest.h"
#include "PobblewigDemoModel/DemoReplies.h"
#include "foundation/Time.h"

#include <QByteArray>

#include <vector>

/// Replies in the words of the chat completions format.
namespace pobblewig::CompletionFormat {

/// A whole answer in one JSON object.
QByteArray completion(const ChatRequest& request, const DemoReply& reply, TimePoint created);

/// A streamed answer, one server-sent event for each word and for each piece of a call, ready to be
/// written. Ends with the usage, if the request wants to know it, and the end mark.
std::vector<QByteArray> events(
    const ChatRequest& request, const DemoReply& reply, TimePoint created);

QByteArray error(const QString& message);

} // namespace pobblewig::CompletionFormat
