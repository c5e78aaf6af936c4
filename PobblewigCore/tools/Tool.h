#pragma once

#include "foundation/Task.h"
#include "tools/ToolArguments.h"

#include <QStringView>

#include <tl/expected.hpp>

#include <functional>

namespace pobblewig {

/// A function that a model may call. The list that a model is offered, the instructions for models
/// without functions and what runs a call all read this one record.
struct Tool {
    enum class Group {
        alwaysLoaded,
        /// The moment and the messages that nobody asked for.
        situation,
        screenCapture,
        /// Loaded by `describe_tool` once a model wants it, which keeps the requests small.
        deferred,
        /// Changes something, each time by way of the user.
        action,
    };

    /// A text for the model; the error says what it can do better.
    using Outcome = tl::expected<QString, QString>;

    Group group = Group::deferred;
    QStringView name;
    QStringView description;
    /// A JSON schema of its arguments.
    QStringView schema = uR"({"type":"object","properties":{}})";
    /// How it stands in the instructions for models without functions, such as
    /// "memory_read_section {path} — one reference section with all its items".
    QStringView instruction;
    /// Nothing for an action, which is only noted and put before the user.
    std::function<Task<Outcome>(ToolArguments arguments)> run = nullptr;
};

} // namespace pobblewig
