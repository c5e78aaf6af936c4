#pragma once

#include "conversation/BuddyTools.h"
#include "conversation/CaptureConsent.h"
#include "conversation/ScreenshotTaker.h"
#include "tools/MemoryToolExecutor.h"

#include <optional>
#include <set>
#include <stop_token>

namespace pobblewig {

/// Runs the reading tools of a turn: the memory tools, a picture of the screen, and the loading of
/// further tools. Every failure becomes a text for the model.
class ToolRunner {
public:
    /// Everything here must outlive the turn.
    struct Dependencies {
        const BuddyTools& tools;
        /// Null if memory cannot be read.
        MemoryToolExecutor* executor = nullptr;
        /// Asked for each call. While false, no memory tool runs, even if a model knows its name.
        std::function<bool()> isMemoryEnabled;
        /// A call that has not begun when the turn is stopped never runs. Ends a wait for the
        /// user's consent.
        std::stop_token stop = {};
        ScreenshotTaker& screenshots;
        /// Asked before each picture.
        CaptureConsent& consent;
        /// Called with the description of each picture taken.
        std::function<void(const QString& description)> captured;
    };

    struct Outcome {
        /// One result for each call, in order.
        std::vector<MemoryToolResult> results;
        /// Whether one of the calls took the turn's picture.
        bool freshScreenshot = false;
    };

    explicit ToolRunner(Dependencies dependencies);

    bool isMemoryEnabled() const { return m.isMemoryEnabled(); }
    bool isAvailable() const { return m.executor || m.screenshots.isAvailable(); }

    /// The tools offered to a model after these deferred tools were loaded.
    std::vector<LLMToolDefinition> offered(std::set<QString> expanded) const;

    /// The names of the tools loaded so far.
    const std::set<QString>& expanded() const { return m_expanded; }

    /// The only picture of the turn.
    const std::optional<QByteArray>& toolScreenshot() const { return m_toolScreenshot; }

    Task<Outcome> runRetrieval(std::vector<MemoryToolCall> calls);

private:
    enum class Place { here, executor, nowhere };

    std::vector<MemoryToolCall> forExecutor(const std::vector<MemoryToolCall>& calls) const;
    Place place(const MemoryToolCall& call) const;
    MemoryToolExecutor::Permit permit() const;
    Task<std::vector<MemoryToolResult>> executeAll(std::vector<MemoryToolCall> calls);
    Task<MemoryToolResult> runHere(MemoryToolCall call);
    MemoryToolResult describeTool(const MemoryToolCall& call);
    Task<MemoryToolResult> runScreenCapture();
    bool canCapture() const { return m.screenshots.isAvailable() && !m.screenshots.isTaking(); }
    Task<MemoryToolResult> capture();

    Dependencies m;
    std::set<QString> m_expanded;
    std::optional<QByteArray> m_toolScreenshot;
    /// Why there is no picture, once the user was asked in vain.
    std::optional<QString> m_captureRefusal;
};

} // namespace pobblewig
