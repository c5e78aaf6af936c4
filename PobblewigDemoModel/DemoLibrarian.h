#pragma once

#include "PobblewigDemoModel/ChatRequest.h"

#include <QDateTime>

/// Answers the app's requests to maintain its memory, and to judge the mood of the conversation.
namespace pobblewig::DemoLibrarian {

/// Returns nothing for other requests. Recognises these by the name of their schema or, without
/// one, by the beginning of their prompt.
std::optional<JSONValue> answer(const ChatRequest& request, const QDateTime& now);

} // namespace pobblewig::DemoLibrarian
