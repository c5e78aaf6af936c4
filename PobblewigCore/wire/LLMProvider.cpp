#include "wire/LLMProvider.h"

namespace pobblewig {

namespace {

constexpr int mostEvents = 20'000;

LLMFailure answerTooLong()
{
    return LLMError::invalidResponse(QStringLiteral("the answer is too long."));
}

} // namespace

Task<tl::expected<LLMCompletion, LLMFailure>> LLMProvider::completeWithUsage(LLMRequest request)
{
    request.tools.clear();
    const auto stream = streamChat(std::move(request));
    LLMCompletion completion;
    int events = 0;
    while (const auto event = co_await stream.next()) {
        if (const auto* token = std::get_if<LLMToken>(&*event))
            completion.text += token->text;
        if (std::holds_alternative<LLMWasThought>(*event))
            completion.text.clear();
        if (const auto* usage = std::get_if<LLMUsage>(&*event)) {
            completion.promptTokens = usage->promptTokens;
            completion.completionTokens = usage->completionTokens;
        }
        if (const auto* end = std::get_if<LLMFinished>(&*event))
            completion.end = *end;
        if (++events > mostEvents || completion.text.size() > mostCharacters)
            co_return tl::unexpected(answerTooLong());
    }
    if (stream.error())
        co_return tl::unexpected(*stream.error());
    co_return completion;
}

Task<tl::expected<QString, LLMFailure>> LLMProvider::complete(LLMRequest request)
{
    auto completion = co_await completeWithUsage(std::move(request));
    if (!completion)
        co_return tl::unexpected(std::move(completion.error()));
    co_return std::move(completion->text);
}

} // namespace pobblewig
