#include "conversation/ToolRunner.h"

#include "conversation/TurnTools.h"
#include "tools/ToolArguments.h"

#include <utility>

namespace pobblewig {

namespace {

MemoryToolResult captureResult(bool ok, const QString& text)
{
    return { .name = TurnTools::screenCapture.toString(), .ok = ok, .text = text };
}

std::optional<QString> refusal(CaptureConsent::Verdict verdict)
{
    switch (verdict) {
    case CaptureConsent::Verdict::granted:
        return std::nullopt;
    case CaptureConsent::Verdict::denied:
        return QStringLiteral("the user did not allow a picture");
    case CaptureConsent::Verdict::paused:
        return QStringLiteral("observation is paused, so there are no pictures of the screen");
    }
    Q_UNREACHABLE();
}

} // namespace

ToolRunner::ToolRunner(Dependencies dependencies)
    : m(std::move(dependencies))
{
}

std::vector<LLMToolDefinition> ToolRunner::offered(std::set<QString> expanded) const
{
    using Offered = BuddyTools::Offered;
    const auto when = [](bool isOffered) { return isOffered ? Offered::yes : Offered::no; };
    return m.tools.offered({
        .retrieval = when(isAvailable()),
        .screenCapture = when(m.screenshots.isAvailable()),
        .memory = when(m.isMemoryEnabled()),
        .expanded = std::move(expanded),
    });
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
        outcome.freshScreenshot |= result.ok && call.name == TurnTools::screenCapture;
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
    if (call.name == TurnTools::describeTool || call.name == TurnTools::screenCapture)
        return Place::here;
    return m.executor ? Place::executor : Place::nowhere;
}

MemoryToolExecutor::Permit ToolRunner::permit() const
{
    return [this](const MemoryToolCall& call) {
        const auto* tool = m.tools.find(call.name);
        return !m.stop.stop_requested() && (!tool || !tool->needsMemory || m.isMemoryEnabled());
    };
}

Task<std::vector<MemoryToolResult>> ToolRunner::executeAll(std::vector<MemoryToolCall> calls)
{
    if (calls.empty())
        co_return {};
    co_return co_await m.executor->executeAll(std::move(calls), permit());
}

Task<MemoryToolResult> ToolRunner::runHere(MemoryToolCall call)
{
    if (call.name == TurnTools::screenCapture)
        co_return co_await runScreenCapture();
    if (call.name == TurnTools::describeTool)
        co_return describeTool(call);
    if (place(call) == Place::nowhere)
        co_return MemoryToolResult::unavailable(call.name);
    co_return MemoryToolResult { call.name, false, QStringLiteral("error: not executed") };
}

MemoryToolResult ToolRunner::describeTool(const MemoryToolCall& call)
{
    const auto name = ToolArguments(call.args).string(QStringLiteral("name"));
    const auto* tool = name ? m.tools.find(*name) : nullptr;
    if (!tool || tool->group != Tool::Group::deferred)
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
    if (!m_captureRefusal && canCapture()) {
        const auto verdict = co_await m.consent.ask(m.stop);
        m_captureRefusal = refusal(verdict);
    }
    if (m_captureRefusal)
        co_return captureResult(false, *m_captureRefusal);
    co_return co_await capture();
}

Task<MemoryToolResult> ToolRunner::capture()
{
    if (!canCapture())
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
