#pragma once

#include "foundation/Task.h"
#include "tools/ToolArguments.h"

#include <tl/expected.hpp>

#include <functional>

namespace pobblewig {

/// A function that a model may call. The list that a model is offered, the instructions for models
/// without functions and what runs a call all read this one record. A feature returns its records
/// from a function of its own, such as `MemoryTools::tools`.
struct Tool {
    /// Whether and when a model is offered it, in the order of the offer.
    enum class Group {
        alwaysLoaded,
        /// The moment and the messages that nobody asked for.
        situation,
        screenCapture,
        /// Loaded by `describe_tool` once a model wants it, which keeps the requests small.
        deferred,
        /// Changes something, each time by way of the user.
        action,
        /// Runs for a model that knows its name; none is told of it.
        unlisted,
    };

    /// Where its line stands in the instructions for models without functions.
    enum class Section { archive, situation, user, notes, folders, screen, others };

    /// A text for the model; the error says what it can do better.
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
    /// Nothing for an action, which is only noted and put before the user, and for what only a turn
    /// can run.
    std::function<Task<Outcome>(ToolArguments arguments)> run = nullptr;

    /// What runs is a function, mostly a coroutine, that gets a service by value: as a pointer, or
    /// as a record of references.
    template <typename Service>
    static auto runner(Task<Outcome> (*handler)(Service, ToolArguments), Service service)
    {
        return [handler, service = std::move(service)](
                   ToolArguments arguments) { return handler(service, std::move(arguments)); };
    }
};

} // namespace pobblewig
