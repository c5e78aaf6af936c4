#include "wire/ToolCallAccumulator.h"

namespace pobblewig {

namespace {

constexpr size_t mostCalls = 1000;
constexpr qsizetype mostCharacters = 200'000;

std::optional<QString> signature(const ToolCallDelta& delta)
{
    if (!delta.extraContent || !delta.extraContent->google)
        return std::nullopt;
    const auto& text = delta.extraContent->google->thoughtSignature;
    return text && !text->isEmpty() ? text : std::nullopt;
}

} // namespace

void ToolCallAccumulator::add(const ToolCallDelta& delta, int position)
{
    auto& partial = m_partials[delta.index.value_or(position)];
    if (delta.id && !delta.id->isEmpty())
        partial.id = *delta.id;
    if (delta.function && delta.function->name && !delta.function->name->isEmpty())
        partial.name = *delta.function->name;
    if (delta.function && delta.function->arguments) {
        partial.arguments += *delta.function->arguments;
        m_characters += delta.function->arguments->size();
    }
    if (!partial.thoughtSignature)
        partial.thoughtSignature = signature(delta);
}

bool ToolCallAccumulator::isTooMuch() const
{
    return m_partials.size() > mostCalls || m_characters > mostCharacters;
}

std::vector<LLMToolCall> ToolCallAccumulator::complete() const
{
    std::vector<LLMToolCall> calls;
    for (const auto& [index, partial] : m_partials) {
        if (partial.name.isEmpty())
            continue;
        const auto id = partial.id.isEmpty() ? QStringLiteral("call_%1").arg(index) : partial.id;
        calls.emplace_back(
            id, partial.name, partial.arguments, std::nullopt, partial.thoughtSignature);
    }
    return calls;
}

} // namespace pobblewig
