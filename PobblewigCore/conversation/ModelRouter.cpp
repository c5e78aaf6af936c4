#include "conversation/ModelRouter.h"

#include "foundation/EnumNames.h"
#include "foundation/Log.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

bool hasImage(const std::vector<LLMMessage>& messages)
{
    return std::ranges::any_of(
        messages, [](const auto& message) { return !message.images.empty(); });
}

bool speaksOfToolCalls(const std::vector<LLMMessage>& messages)
{
    return std::ranges::any_of(messages, [](const auto& message) {
        return message.role == LLMMessage::Role::tool
            || (message.toolCalls && !message.toolCalls->empty());
    });
}

/// With the pauses between them, a few minutes.
constexpr int mostWaitsForLoading = 90;

LLMRequest modelRequest(const ModelRouter::Request& request, UsageLane lane)
{
    return {
        .messages = request.messages,
        .temperature = lane == UsageLane::main ? 0.7 : 0.4,
    };
}

int status(const ChatError& error)
{
    const auto* model = modelError(error);
    return model && model->kind == LLMError::Kind::http ? model->status : 0;
}

/// Whether the model had no room left for more than its thoughts.
bool hasOnlyThought(const ModelReply& reply)
{
    return reply.end.isCutOff && reply.end.hasThought && reply.text.trimmed().isEmpty()
        && std::ranges::all_of(reply.toolCalls, &LLMToolCall::isBroken);
}

tl::unexpected<ChatError> cancelled()
{
    return tl::unexpected(ChatError(Cancelled()));
}

} // namespace

ModelRouter::ModelRouter(
    UsageCounter& usage, ModelProviding& models, std::chrono::milliseconds loadingPause)
    : m_usage(usage)
    , m_models(models)
    , m_loadingPause(loadingPause)
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
    noteAsked(routed);
    if (routed.lane == UsageLane::vision)
        Log::line(QStringLiteral("buddy: routing image request to the vision model"));
    auto asked = modelRequest(request, routed.lane);
    if (offersNativeTools(routed.lane))
        asked.tools = request.tools;
    asked.wantsThoughts = bool(request.onThought);
    Attempt attempt { routed, std::move(asked), request.onToken, request.onThought,
        request.onTakenBack, request.onLoading };
    auto reply = co_await streamOnceLoaded(attempt, stop);
    if (reply || !rejectsTools(reply.error(), attempt.asked))
        co_return reply;
    attempt.asked.tools.clear();
    auto plainReply = co_await streamOnceLoaded(std::move(attempt), stop);
    if (plainReply)
        disableNativeTools(routed.lane, reply.error());
    co_return plainReply;
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
    auto configured =
        route.lane == UsageLane::vision ? m_models.visionConfig() : m_models.mainConfig();
    const auto config = co_await std::move(configured);
    route.maxTokens = config.maxOutputTokens;
    co_return route;
}

void ModelRouter::noteAsked(const Route& route)
{
    const auto& configuration = route.provider->configuration();
    m_asked = { .server = configuration.baseURL,
        .modelID = configuration.modelID,
        .isForPictures = route.lane == UsageLane::vision,
        .isManaged = configuration.usesCloudAuth };
}

Task<ModelRouter::Reply> ModelRouter::streamOnceLoaded(Attempt attempt, std::stop_token stop)
{
    for (int waits = 0;; ++waits) {
        auto reply = co_await streamWithRoom(attempt, stop);
        if (reply || complaint(reply.error()) != ServerComplaint::modelLoading
            || waits == mostWaitsForLoading)
            co_return reply;
        if (waits == 0 && attempt.onLoading)
            attempt.onLoading();
        co_await pauseForLoading();
        if (stop.stop_requested())
            co_return cancelled();
    }
}

Task<> ModelRouter::pauseForLoading()
{
    // An empty stream, so that `close` ends it like a reply.
    const auto pause = std::make_shared<LLMStream>();
    m_stream = pause;
    QTimer::singleShot(m_loadingPause, [sink = pause->sink()] { sink.finish(); });
    co_await pause->next();
}

Task<ModelRouter::Reply> ModelRouter::streamWithRoom(Attempt attempt, std::stop_token stop)
{
    giveRoom(attempt.asked, attempt.route);
    auto reply = co_await stream(attempt, stop);
    const auto isNewInsight =
        reply && reply->end.hasThought && m_thinkingLanes.insert(attempt.route.lane).second;
    if (isNewInsight && hasOnlyThought(*reply)) {
        giveRoom(attempt.asked, attempt.route);
        reply = co_await stream(std::move(attempt), stop);
    }
    if (reply && hasOnlyThought(*reply) && reply->toolCalls.empty())
        co_return tl::unexpected(ChatError(LLMFailure(LLMError::onlyThought())));
    co_return reply;
}

void ModelRouter::giveRoom(LLMRequest& request, const Route& route) const
{
    const auto factor = m_thinkingLanes.contains(route.lane) ? LLMProvider::roomForThinking : 1;
    request.maxTokens = route.maxTokens * factor;
}

Task<ModelRouter::Reply> ModelRouter::stream(Attempt attempt, std::stop_token stop)
{
    const auto lane = attempt.route.lane;
    const auto onToken = attempt.onToken;
    const auto onThought = attempt.onThought;
    const auto onTakenBack = attempt.onTakenBack;
    const auto events =
        std::make_shared<LLMStream>(attempt.route.provider->streamChat(std::move(attempt.asked)));
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
        } else if (const auto* thought = std::get_if<LLMThought>(&*event)) {
            onThought(thought->text);
        } else if (std::holds_alternative<LLMWasThought>(*event)) {
            onTakenBack(std::exchange(reply.text, {}));
        } else if (auto* calls = std::get_if<LLMToolCalls>(&*event)) {
            reply.toolCalls = std::move(calls->calls);
        } else if (const auto* reported = std::get_if<LLMUsage>(&*event)) {
            usage = *reported;
        } else if (const auto* end = std::get_if<LLMFinished>(&*event)) {
            reply.end = *end;
        }
        if (reply.text.size() > LLMProvider::mostCharacters) {
            reply.end.isCutOff = true;
            events->close();
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
    const auto about = complaint(error);
    const auto isRejection = about == ServerComplaint::toolsUnsupported
        || (about == ServerComplaint::plain && (status(error) == 400 || status(error) == 422));
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
