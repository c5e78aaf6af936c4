#include "tools/MemoryToolExecutor.h"

#include "foundation/Text.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr qsizetype maxLoggedCharacters = 500;
/// Arguments beyond this length are not visible in the summary.
constexpr qsizetype mostSummaryUnits = 16'000;

QString summaryOf(const std::map<QString, JSONValue>& args)
{
    QString summary;
    for (const auto& [key, value] : args) {
        if (summary.size() > mostSummaryUnits)
            break;
        if (!summary.isEmpty())
            summary += QStringLiteral(", ");
        summary += Text::firstCharacters(key, maxLoggedCharacters) + u'='
            + Text::firstCharacters(value.displayString(), maxLoggedCharacters);
    }
    return Text::firstCharacters(summary, maxLoggedCharacters);
}

} // namespace

MemoryToolExecutor::MemoryToolExecutor(std::vector<Tool> tools, Clock clock)
    : m_tools(std::move(tools))
    , m_clock(std::move(clock))
{
}

std::vector<MemoryToolLogEntry> MemoryToolExecutor::recentLog(int limit) const
{
    const auto count = std::clamp<std::ptrdiff_t>(limit, 0, std::ssize(m_log));
    return { m_log.end() - count, m_log.end() };
}

auto MemoryToolExecutor::executeAll(std::vector<MemoryToolCall> calls, Permit mayRun)
    -> Task<std::vector<MemoryToolResult>>
{
    std::vector<MemoryToolResult> results;
    results.reserve(calls.size());
    for (auto& call : calls) {
        if (results.size() == maxCallsPerRequest)
            break;
        if (mayRun && !mayRun(call)) {
            results.push_back(MemoryToolResult::unavailable(call.name));
            continue;
        }
        auto result = co_await execute(std::move(call));
        results.push_back(std::move(result));
    }
    while (results.size() < calls.size())
        results.push_back(refuse(calls[results.size()]));
    co_return results;
}

auto MemoryToolExecutor::execute(MemoryToolCall call) -> Task<MemoryToolResult>
{
    const auto args = summaryOf(call.args);
    const auto name = call.name;
    const auto outcome = co_await run(std::move(call));
    const auto text = outcome ? *outcome : QStringLiteral("error: ") + outcome.error();
    MemoryToolResult result { name, outcome.has_value(),
        Text::firstCharacters(text, maxResultCharacters) };
    record(result, args);
    co_return result;
}

auto MemoryToolExecutor::run(MemoryToolCall call) -> Task<Tool::Outcome>
{
    const auto tool = std::ranges::find(m_tools, call.name, &Tool::name);
    if (tool == m_tools.end() || !tool->run)
        co_return tl::unexpected(ArgError::unknownTool(call.name).description());
    const auto handler = tool->run;
    co_return co_await handler(ToolArguments(std::move(call.args)));
}

MemoryToolResult MemoryToolExecutor::refuse(const MemoryToolCall& call)
{
    MemoryToolResult result { call.name, false,
        QStringLiteral("refused: max %1 tool calls per request").arg(maxCallsPerRequest) };
    record(result, summaryOf(call.args));
    return result;
}

void MemoryToolExecutor::record(const MemoryToolResult& result, const QString& argsSummary)
{
    ++m_totalCalls;
    m_log.push_back({
        .name = Text::firstCharacters(result.name, maxLoggedCharacters),
        .argsSummary = argsSummary,
        .ok = result.ok,
        .resultBytes = int(result.text.toUtf8().size()),
        .timestamp = m_clock(),
    });
    if (m_log.size() > maxLogEntries)
        m_log.pop_front();
}

} // namespace pobblewig
