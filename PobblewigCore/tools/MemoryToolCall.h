#pragma once

#include "foundation/JSONValue.h"

#include <map>

namespace pobblewig {

/// A model's request to read from memory or to add to it.
struct MemoryToolCall {
    QString name;
    std::map<QString, JSONValue> args;
};

/// Always holds a text for the model. If the call failed, the text says how to do better.
struct MemoryToolResult {
    QString name;
    bool ok = false;
    QString text;

    /// The result of a call that did not run.
    static MemoryToolResult unavailable(const QString& name)
    {
        return { name, false, QStringLiteral("error: memory tools unavailable") };
    }

    bool operator==(const MemoryToolResult&) const = default;
};

/// A call as the diagnostics show it.
struct MemoryToolLogEntry {
    QString name;
    /// The arguments by key, such as "limit=5, query=thesis". A long summary is cut.
    QString argsSummary;
    bool ok = false;
    /// The size of the text in UTF-8.
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
