#pragma once

#include "PobblewigDemoModel/DemoToolCall.h"

#include <optional>
#include <vector>

/// How calls and their results travel in plain text, where a server knows no functions.
namespace pobblewig::FencedCalls {

enum class Kind { lookUps, changes };

/// A block for the end of a reply.
QString written(const std::vector<DemoToolCall>& calls, Kind kind);

struct Result {
    QString name;
    QString text;
};

/// The results that a message reports; nothing if it is another kind of message.
std::optional<std::vector<Result>> results(const QString& message);

} // namespace pobblewig::FencedCalls
