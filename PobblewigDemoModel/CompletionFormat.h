#pragma once

#include "PobblewigDemoModel/ChatRequest.h"
#include "PobblewigDemoModel/DemoReplies.h"
#include "foundation/Time.h"

#include <QByteArray>

#include <vector>

/// Writes replies in the chat completions format.
namespace pobblewig::CompletionFormat {

/// A complete answer as one JSON object.
QByteArray completion(const ChatRequest& request, const DemoReply& reply, TimePoint created);

/// A streamed answer, ready to be sent: one server-sent event for each word and for each piece of a
/// call, then the usage if it was requested, then the end mark.
std::vector<QByteArray> events(
    const ChatRequest& request, const DemoReply& reply, TimePoint created);

/// The list of the server's models, which has one.
QByteArray models();

QByteArray error(const QString& message);

} // namespace pobblewig::CompletionFormat
