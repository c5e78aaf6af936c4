#pragma once

#include "foundation/Time.h"
#include "tools/MemoryToolCall.h"
#include "tools/Tool.h"

#include <deque>
#include <vector>

namespace pobblewig {

/// Runs a model's tool calls within their limits and logs them. Every failure becomes a text for
/// the model, so that a bad call never breaks a turn.
///
/// Lives on the main thread, as long as the process.
class MemoryToolExecutor {
public:
    static constexpr size_t maxCallsPerRequest = 4;
    static constexpr qsizetype maxResultCharacters = 4000;
    static constexpr size_t maxLogEntries = 200;

    explicit MemoryToolExecutor(std::vector<Tool> tools = {}, Clock clock = systemNow);

    int totalCalls() const { return m_totalCalls; }

    /// The latest calls, refused ones included, oldest first.
    std::vector<MemoryToolLogEntry> recentLog(int limit) const;

    /// Whether a call may still run, asked right before it runs.
    using Permit = std::function<bool(const MemoryToolCall& call)>;

    /// Returns one result for each call, in order. The calls run one after the other; calls over
    /// the limit or without a permit are refused.
    Task<std::vector<MemoryToolResult>> executeAll(
        std::vector<MemoryToolCall> calls, Permit mayRun = {});
    Task<MemoryToolResult> execute(MemoryToolCall call);

    /// Replaces all tools.
    void setTools(std::vector<Tool> tools) { m_tools = std::move(tools); }

private:
    Task<Tool::Outcome> run(MemoryToolCall call);
    MemoryToolResult refuse(const MemoryToolCall& call);
    void record(const MemoryToolResult& result, const QString& argsSummary);

    std::vector<Tool> m_tools;
    Clock m_clock;
    std::deque<MemoryToolLogEntry> m_log;
    int m_totalCalls = 0;
};

} // namespace pobblewig
