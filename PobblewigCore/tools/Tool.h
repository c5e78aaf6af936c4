#pragma once

#include "foundation/Task.h"
#include "tools/ToolArguments.h"

#include <tl/expected.hpp>

#include <functional>

namespace pobblewig {

/// A function that a model may call. The offer to a model, the instructions for models without
/// function calls, and the execution of a call all read this one record. A feature returns its
/// records from a function of its own, such as `MemoryTools::tools`.
struct Tool {
    /// Whether and when a model is offered the tool, in the order of the offer.
    enum class Group {
        alwaysLoaded,
        /// The tools for the current situation and for the messages that the companion began.
        situation,
        screenCapture,
        /// Loaded by `describe_tool` when a model needs it, which keeps requests small.
        deferred,
        /// Changes something, always with the user's involvement.
        action,
        /// Runs for a model that knows its name, but is never announced.
        unlisted,
    };

    /// The section of its line in the instructions for models without function calls.
    enum class Section { archive, situation, user, notes, folders, screen, others };

    /// A text for the model. The error says what the model can do better.
    using Outcome = tl::expected<QString, QString>;

    Group group = Group::deferred;
    QString name = {};
    QString description = {};
    /// A JSON schema of its arguments.
    QString schema = QStringLiteral(R"({"type":"object","properties":{}})");
    Section section = Section::others;
    /// Its line in those instructions, such as "memory_read_section {path} — one reference section
    /// with all its items."; empty if it has none.
    QString instruction = {};
    /// Neither offered nor run while the memory is off.
    bool needsMemory = false;
    /// Null for an action, which is only recorded and put to the user, and for a tool that only a
    /// turn can run.
    std::function<Task<Outcome>(ToolArguments arguments)> run = nullptr;

    /// Binds a service to a handler, which is mostly a coroutine. The service is passed by value: a
    /// pointer, or a record of references.
    template <typename Service>
    static auto runner(Task<Outcome> (*handler)(Service, ToolArguments), Service service)
    {
        return [handler, service = std::move(service)](
                   ToolArguments arguments) { return handler(service, std::move(arguments)); };
    }
};

} // namespace pobblewig
