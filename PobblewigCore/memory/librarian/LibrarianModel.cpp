#include "memory/librarian/LibrarianModel.h"

#include "foundation/Log.h"

#include <utility>

namespace pobblewig {

namespace {

/// A slow local model needs minutes. Without a limit, a server that sends keep-alives but no answer
/// would delay the end of a session forever.
constexpr std::chrono::minutes longestAnswer(10);

LLMRequest requestFor(const LibrarianModel::Question& question, const LibrarianModelConfig& config)
{
    return {
        .messages = { { .role = LLMMessage::Role::user, .content = question.prompt } },
        .maxTokens = question.maxTokens.value_or(config.maxOutputTokens) * question.tokenFactor,
        .temperature = config.temperature,
        .responseFormat = question.format,
        .longest = longestAnswer,
    };
}

/// The status by which a server rejects the request itself.
std::optional<int> rejection(const LLMFailure& failure)
{
    const auto* error = std::get_if<LLMError>(&failure);
    const auto isRejection = error && error->kind == LLMError::Kind::http && error->status >= 400
        && error->status <= 499;
    return isRejection ? std::optional(error->status) : std::nullopt;
}

bool hasOnlyThought(const LLMCompletion& completion)
{
    return completion.end.isCutOff && completion.end.hasThought
        && completion.text.trimmed().isEmpty();
}

} // namespace

LibrarianModel::LibrarianModel(UsageCounter& usage, ModelProviding& models, Asker asker)
    : m_usage(usage)
    , m_models(models)
    , m_asker(std::move(asker))
{
}

auto LibrarianModel::ask(Question question, std::stop_token stop) -> Task<Answer>
{
    const std::shared_ptr<LLMProvider> provider = co_await m_models.makeProvider(m_asker.use);
    if (!provider)
        co_return std::nullopt;
    const auto config = co_await m_models.librarianConfig();
    if (stop.stop_requested())
        co_return std::nullopt;
    const auto completion = co_await complete(provider, requestFor(question, config), stop);
    if (stop.stop_requested())
        co_return std::nullopt;
    co_return completion.map(&LLMCompletion::text);
}

Task<int> LibrarianModel::answerTokens()
{
    const auto config = co_await m_models.librarianConfig();
    co_return config.maxOutputTokens;
}

auto LibrarianModel::complete(std::shared_ptr<LLMProvider> provider, LLMRequest request,
    std::stop_token stop) -> Task<Completion>
{
    const auto first = co_await completeWithRoom(provider, request, stop);
    const auto status = first ? std::nullopt : rejection(first.error());
    if (!status || stop.stop_requested())
        co_return first;
    Log::line(QStringLiteral("buddy: %1: json_schema rejected (HTTP %2); retrying with "
                             "json_object")
                  .arg(m_asker.name)
                  .arg(*status));
    request.responseFormat = { .kind = LLMResponseFormat::Kind::jsonObject };
    co_return co_await completeWithRoom(provider, request, stop);
}

auto LibrarianModel::completeWithRoom(std::shared_ptr<LLMProvider> provider, LLMRequest request,
    std::stop_token stop) -> Task<Completion>
{
    auto roomy = request;
    roomy.maxTokens *= LLMProvider::roomForThinking;
    auto completion = co_await completeOnce(provider, m_thinks ? roomy : request);
    const auto hasThought = completion && completion->end.hasThought;
    const auto isNewInsight = hasThought && !std::exchange(m_thinks, true);
    if (isNewInsight && completion->end.isCutOff && !stop.stop_requested())
        completion = co_await completeOnce(provider, std::move(roomy));
    if (completion && hasOnlyThought(*completion))
        co_return tl::unexpected(LLMFailure(LLMError::onlyThought()));
    co_return completion;
}

auto LibrarianModel::completeOnce(std::shared_ptr<LLMProvider> provider, LLMRequest request)
    -> Task<Completion>
{
    const auto completion = co_await provider->completeWithUsage(std::move(request));
    if (completion)
        m_usage.addLibrarianUsage(completion->promptTokens, completion->completionTokens);
    co_return completion;
}

} // namespace pobblewig
