#pragma once

#include "tools/MemoryToolCall.h"

#include <QJsonObject>

#include <optional>
#include <vector>

/// The JSON that a model writes where it cannot call functions.
namespace pobblewig::ControlBlock {

inline constexpr qsizetype maxEntries = 100;

/// The first ones of a text that is `{"actions": […]}` or such an array alone; nothing if it is
/// anything else, or if one of them has no type.
std::optional<std::vector<QJsonObject>> actionPayloads(QStringView body);

/// The first ones of a text that is `{"tools": […]}`; none if one of them has no name.
std::vector<MemoryToolCall> toolCalls(QStringView body);

} // namespace pobblewig::ControlBlock
