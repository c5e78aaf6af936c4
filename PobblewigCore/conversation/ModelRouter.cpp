#include "conversation/ModelRouter.h"

#include "foundation/EnumNames.h"
#include "foundation/Log.h"

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

bool hasImage(const std::vector<LLMMessage>& messages)
{
    return std::ranges::any_of(
        messages, [](const auto& message) { return message.imageJPEG.has_value(); });
}

bool speaksOfToolCalls(const std::vector<LLMMessage>& messages)
{
    return std::ranges::any_of(messages, [](const auto& message) {
        return message.role == LLMMessage::Role::tool
            || (message.toolCalls && !message.toolCalls->empty());
    });
}

LLMRequest modelRequest(const ModelRouter::Request& request, UsageLane lane)
{
    return {
        .messages = request.messages,
        .maxTokens = request.maxTokens,
        .temperature = lane == UsageLane::main ? 0.7 : 0.4,
    };
}

int status(const ChatError& error)
{
    const auto* failure = std::get_if<LLMFailure>(&error);
    const auto* model = failure ? std::get_if<LLMError>(failure) : nullptr;
    return model && model->kind == LLMError::Kind::http ? model->status : 0;
}

tl::unexpected<ChatError> cancelled()
{
    return tl::unexpected(ChatError(Cancelled()));
}

} // namespace

ModelRouter::ModelRouter(UsageCounter& usage, ModelProviding& models)
    : m_usage(usage)
    , m_models(models)
{
}

Task<UsageLane> ModelRouter::lane(bool hasImage)
{
    const auto routed = co_await route(hasImage);
    co_return routed.lane;
}

Task<ModelRouter::Reply> ModelRouter::streamRouted(Request request, std::stop_token stop)
{
    const auto routed = co_await route(hasImage(request.messages));
    if (stop.stop_requested())
        co_return cancelled();
    if (!routed.provider)
        co_return tl::unexpected(ChatError(
            LLMFailure(LLMError::notConfigured(QStringLiteral("main model not configured")))));
    if (routed.lane == UsageLane::vision)
        Log::line(QStringLiteral("buddy: routing image request to the vision model"));
    auto asked = modelRequest(request, routed.lane);
    if (offersNativeTools(routed.lane))
        asked.tools = request.tools;
    auto reply =
        co_await stream(routed.provider->streamChat(asked), routed.lane, request.onToken, stop);
    if (reply || !rejectsTools(reply.error(), asked))
        co_return reply;
    disableNativeTools(routed.lane, reply.error());
    asked.tools.clear();
    co_return co_await stream(
        routed.provider->streamChat(std::move(asked)), routed.lane, request.onToken, stop);
}

void ModelRouter::close()
{
    if (const auto stream = std::exchange(m_stream, nullptr))
        stream->close();
}

Task<ModelRouter::Route> ModelRouter::route(bool hasImage)
{
    Route route;
    if (hasImage) {
        route.provider = co_await m_models.makeProvider(ModelUse::vision);
        route.lane = route.provider ? UsageLane::vision : UsageLane::main;
    }
    if (!route.provider)
        route.provider = co_await m_models.makeProvider(ModelUse::main);
    co_return route;
}

Task<ModelRouter::Reply> ModelRouter::stream(
    LLMStream stream, UsageLane lane, TokenHandler onToken, std::stop_token stop)
{
    const auto events = std::make_shared<LLMStream>(std::move(stream));
    m_stream = events;
    ModelReply reply;
    std::optional<LLMUsage> usage;
    while (auto event = co_await events->next()) {
        if (stop.stop_requested())
            co_return cancelled();
        if (const auto* token = std::get_if<LLMToken>(&*event)) {
            reply.text += token->text;
            if (onToken)
                onToken(token->text);
        } else if (auto* calls = std::get_if<LLMToolCalls>(&*event)) {
            reply.toolCalls = std::move(calls->calls);
        } else if (const auto* reported = std::get_if<LLMUsage>(&*event)) {
            usage = *reported;
        }
    }
    if (stop.stop_requested())
        co_return cancelled();
    m_stream = nullptr;
    if (events->error())
        co_return tl::unexpected(ChatError(*events->error()));
    if (usage)
        addUsage(lane, *usage);
    co_return reply;
}

bool ModelRouter::rejectsTools(const ChatError& error, const LLMRequest& request) const
{
    const auto isRejection = status(error) == 400 || status(error) == 422;
    // An exchange that began with tool calls cannot be sent without them.
    return isRejection && !request.tools.empty() && !speaksOfToolCalls(request.messages);
}

void ModelRouter::disableNativeTools(UsageLane lane, const ChatError& error)
{
    m_disabledNativeLanes.insert(lane);
    Log::line(QStringLiteral("buddy: native tools rejected on the %1 lane (HTTP %2); falling back "
                             "to prompt-based tools")
                  .arg(EnumNames::text(lane))
                  .arg(status(error)));
}

void ModelRouter::addUsage(UsageLane lane, const LLMUsage& usage)
{
    if (lane == UsageLane::main)
        m_usage.addMainUsage(usage.promptTokens, usage.completionTokens);
    else
        m_usage.addVisionUsage(usage.promptTokens, usage.completionTokens);
}

} // namespace pobblewig
