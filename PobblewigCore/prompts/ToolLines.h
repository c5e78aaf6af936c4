#pragma once

#include <QStringList>

namespace pobblewig {

/// What the system prompt tells of the tools.
struct ToolLines {
    /// The names of those that a model has to load first.
    QStringList deferred = {};
    /// For models without functions, such as "memory_read_section {path} — one reference section".
    QStringList lookups = {};
    /// The same for the actions, each with a sample entry on a line of its own.
    QStringList actions = {};
};

} // namespace pobblewig
