#pragma once

#include "tools/MemoryToolCall.h"

#include <QJsonObject>

#include <optional>
#include <vector>

/// The JSON that a model writes if it cannot call functions.
namespace pobblewig::ControlBlock {

inline constexpr qsizetype maxEntries = 100;

/// The first entries of a text that is `{"actions": […]}` or such an array alone. Returns nothing
/// for any other text, or if an entry has no type.
std::optional<std::vector<QJsonObject>> actionPayloads(QStringView body);

/// The first entries of a text that is `{"tools": […]}`; empty if an entry has no name.
std::vector<MemoryToolCall> toolCalls(QStringView body);

} // namespace pobblewig::ControlBlock
