#pragma once

#include "PobblewigDemoModel/ChatRequest.h"

/// Writes the messages that the app begins, such as a reminder of a deadline.
namespace pobblewig::DemoInterventions {

/// Returns nothing unless the request asks for such a message.
std::optional<QString> message(const ChatRequest& request);

} // namespace pobblewig::DemoInterventions
