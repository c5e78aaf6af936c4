#include "conversation/ToolRunner.h"

#include "conversation/BuddyTools.h"
#include "tools/ToolArguments.h"

#include <utility>

namespace pobblewig {

namespace {

QString describeToolName()
{
    return QStringLiteral("describe_tool");
}

QString screenCaptureName()
{
    return QStringLiteral("screen_capture");
}

MemoryToolResult captureResult(bool ok, const QString& text)
{
    return { .name = screenCaptureName(), .ok = ok, .text = text };
}

} // namespace

ToolRunner::ToolRunner(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

Task<ToolRunner::Outcome> ToolRunner::runRetrieval(std::vector<MemoryToolCall> calls)
{
    auto fetched = co_await executeAll(forExecutor(calls));
    auto next = fetched.begin();

    Outcome outcome;
    for (const auto& call : calls) {
        if (place(call) == Place::executor && next != fetched.end()) {
            outcome.results.push_back(std::move(*next++));
            continue;
        }
        auto result = co_await runHere(call);
        outcome.freshScreenshot |= result.ok && call.name == screenCaptureName();
        outcome.results.push_back(std::move(result));
    }
    co_return outcome;
}

std::vector<MemoryToolCall> ToolRunner::forExecutor(const std::vector<MemoryToolCall>& calls) const
{
    std::vector<MemoryToolCall> batch;
    std::ranges::copy_if(calls, std::back_inserter(batch),
        [this](const auto& call) { return place(call) == Place::executor; });
    return batch;
}

ToolRunner::Place ToolRunner::place(const MemoryToolCall& call) const
{
    if (call.name == describeToolName() || call.name == screenCaptureName())
        return Place::here;
    if (!m.executor || (!m.isMemoryEnabled && call.name.startsWith(u"memory_")))
        return Place::nowhere;
    return Place::executor;
}

Task<std::vector<MemoryToolResult>> ToolRunner::executeAll(std::vector<MemoryToolCall> calls)
{
    if (calls.empty())
        co_return {};
    co_return co_await m.executor->executeAll(std::move(calls));
}

Task<MemoryToolResult> ToolRunner::runHere(MemoryToolCall call)
{
    if (call.name == screenCaptureName())
        co_return co_await runScreenCapture();
    if (call.name == describeToolName())
        co_return describeTool(call);
    if (place(call) == Place::nowhere)
        co_return MemoryToolResult { call.name, false,
            QStringLiteral("error: memory tools unavailable") };
    co_return MemoryToolResult { call.name, false, QStringLiteral("error: not executed") };
}

MemoryToolResult ToolRunner::describeTool(const MemoryToolCall& call)
{
    const auto name = ToolArguments(call.args).string(QStringLiteral("name"));
    const auto* tool = name ? BuddyTools::deferredTool(*name) : nullptr;
    if (!tool)
        return { call.name, false,
            QStringLiteral("error: no loadable tool named %1 — use a name from the deferred-tools "
                           "list in the system prompt")
                .arg(name.value_or(QStringLiteral("(missing name)"))) };
    m_expanded.insert(tool->name);
    return { call.name, true,
        QStringLiteral("%1 is now available — call it in your next step. It does: %2")
            .arg(tool->name, tool->description) };
}

Task<MemoryToolResult> ToolRunner::runScreenCapture()
{
    if (m_toolScreenshot)
        co_return captureResult(
            false, QStringLiteral("refused: at most one screen capture per request"));
    if (!m.screenshots.isAvailable() || m.screenshots.isTaking())
        co_return captureResult(false, QStringLiteral("error: screen capture is not available"));
    const auto screenshot = co_await m.screenshots.take();
    if (!screenshot)
        co_return captureResult(
            false, QStringLiteral("error: ") + m.screenshots.description(screenshot.error()));
    m_toolScreenshot = screenshot->jpegData;
    m.captured(screenshot->description);
    co_return captureResult(true,
        QStringLiteral("captured: %1 — the image is attached to this message")
            .arg(screenshot->description));
}

} // namespace pobblewig
