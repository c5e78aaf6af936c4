#pragma once

#include <QStringList>

namespace pobblewig {

/// What the system prompt says about the tools.
struct ToolLines {
    /// The names of the tools that a model has to load first.
    QStringList deferred = {};
    /// For models without function calls, such as "memory_read_section {path} — one reference
    /// section".
    QStringList lookups = {};
    /// The same for the actions, each followed by a line with a sample entry.
    QStringList actions = {};
    QStringList actionNames = {};

    /// Whether the model can propose events and reminders.
    bool haveCalendars() const { return actionNames.contains(u"propose_reminder"); }
};

} // namespace pobblewig
