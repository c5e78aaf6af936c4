#pragma once

#include "PobblewigDemoModel/ChatRequest.h"

#include <QDateTime>

/// How the demo model keeps the app's memory in order.
namespace pobblewig::DemoLibrarian {

/// Nothing if the request is for none of these jobs, which it tells by the name of its schema or,
/// where it has none, by how its prompt begins.
std::optional<JSONValue> answer(const ChatRequest& request, const QDateTime& now);

} // namespace pobblewig::DemoLibrarian
