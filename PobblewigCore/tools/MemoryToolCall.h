#pragma once

#include "foundation/JSONValue.h"

#include <map>

namespace pobblewig {

/// A model's wish to read from memory, or to add to it.
struct MemoryToolCall {
    QString name;
    std::map<QString, JSONValue> args;
};

/// Always a text for the model; where the call failed, what it can do better.
struct MemoryToolResult {
    QString name;
    bool ok = false;
    QString text;

    bool operator==(const MemoryToolResult&) const = default;
};

/// A call as the diagnostics show it.
struct MemoryToolLogEntry {
    QString name;
    /// "limit=5, query=thesis", by key; the beginning of a long one.
    QString argsSummary;
    bool ok = false;
    /// Of the text, in UTF-8.
    int resultBytes = 0;
    TimePoint timestamp;

    bool operator==(const MemoryToolLogEntry&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("name", &MemoryToolLogEntry::name),
            required("argsSummary", &MemoryToolLogEntry::argsSummary),
            required("ok", &MemoryToolLogEntry::ok),
            required("resultBytes", &MemoryToolLogEntry::resultBytes),
            required("timestamp", &MemoryToolLogEntry::timestamp) };
    }
};

} // namespace pobblewig
