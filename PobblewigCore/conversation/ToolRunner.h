#pragma once

#include "conversation/BuddyTools.h"
#include "conversation/ScreenshotTaker.h"
#include "tools/MemoryToolExecutor.h"

#include <optional>
#include <set>

namespace pobblewig {

/// Runs what a model reads during one turn: the memory's tools, a picture of the screen, and the
/// loading of further tools. Whatever goes wrong is a text for the model.
class ToolRunner {
public:
    /// All of them outlive the turn.
    struct Dependencies {
        const BuddyTools& tools;
        /// Null where the memory cannot be asked.
        MemoryToolExecutor* executor = nullptr;
        /// Without it no tool of the memory runs, even if a model knows its name.
        bool isMemoryEnabled = true;
        ScreenshotTaker& screenshots;
        /// Called with the description of a picture that was taken.
        std::function<void(const QString& description)> captured;
    };

    struct Outcome {
        /// One for each call, in the order of the calls.
        std::vector<MemoryToolResult> results;
        /// Whether one of them took the picture of this turn.
        bool freshScreenshot = false;
    };

    explicit ToolRunner(Dependencies dependencies);

    bool isAvailable() const { return m.executor || m.screenshots.isAvailable(); }

    /// What a model is offered once these deferred tools are loaded.
    std::vector<LLMToolDefinition> offered(std::set<QString> expanded) const;

    /// The names of the tools that were loaded so far.
    const std::set<QString>& expanded() const { return m_expanded; }

    /// The one picture of the turn.
    const std::optional<QByteArray>& toolScreenshot() const { return m_toolScreenshot; }

    Task<Outcome> runRetrieval(std::vector<MemoryToolCall> calls);

private:
    enum class Place { here, executor, nowhere };

    std::vector<MemoryToolCall> forExecutor(const std::vector<MemoryToolCall>& calls) const;
    Place place(const MemoryToolCall& call) const;
    Task<std::vector<MemoryToolResult>> executeAll(std::vector<MemoryToolCall> calls);
    Task<MemoryToolResult> runHere(MemoryToolCall call);
    MemoryToolResult describeTool(const MemoryToolCall& call);
    Task<MemoryToolResult> runScreenCapture();

    Dependencies m;
    std::set<QString> m_expanded;
    std::optional<QByteArray> m_toolScreenshot;
};

} // namespace pobblewig
