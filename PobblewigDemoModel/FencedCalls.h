#pragma once

#include "PobblewigDemoModel/DemoToolCall.h"

#include <optional>
#include <vector>

/// Calls and their results as plain text, for servers without function calls.
namespace pobblewig::FencedCalls {

enum class Kind { lookUps, changes };

/// A block for the end of a reply.
QString written(const std::vector<DemoToolCall>& calls, Kind kind);

struct Result {
    QString name;
    QString text;
};

/// The results in a message, or nothing if it is another kind of message.
std::optional<std::vector<Result>> results(const QString& message);

} // namespace pobblewig::FencedCalls
