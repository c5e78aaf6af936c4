#pragma once

#include "PobblewigDemoModel/DemoToolCall.h"

#include <optional>
#include <vector>

/// How calls and their results travel in plain text, where a server knows no functions.
namespace pobblewig::FencedCalls {

/// A block for the end of a reply. The calls are all changes or all look-ups.
QString written(const std::vector<DemoToolCall>& calls);

struct Result {
    QString name;
    QString text;
};

/// The results that a message reports; nothing if it is another kind of message.
std::optional<std::vector<Result>> results(const QString& message);

} // namespace pobblewig::FencedCalls
