#include "conversation/ChatService.h"

#include "foundation/Log.h"
#include "prompts/MainAssistantPrompt.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace pobblewig {

namespace {

constexpr auto emptyReplyText = "I got tangled up in my own tools there — mind asking that again?";

LLMError mainModelNotConfigured()
{
    return LLMError::notConfigured(QStringLiteral("main model not configured"));
}

tl::unexpected<ChatError> failed(ChatError error)
{
    return tl::unexpected(std::move(error));
}

bool hasImage(const std::vector<LLMMessage>& messages)
{
    return std::ranges::any_of(
        messages, [](const auto& message) { return message.imageJPEG.has_value(); });
}

const LLMError* modelError(const ChatError& error)
{
    const auto* failure = std::get_if<LLMFailure>(&error);
    return failure ? std::get_if<LLMError>(failure) : nullptr;
}

bool isWorthRetrying(const ChatError& error)
{
    const auto* model = modelError(error);
    return model && model->kind != LLMError::Kind::notConfigured;
}

/// A server's words may quote a key or the conversation: they are for the user, not for the log.
QString loggable(const LLMError& error)
{
    auto bare = error;
    bare.text.clear();
    return bare.description();
}

} // namespace

ChatService::ChatService(ChatHistoryStore& history, UsageCounter& usage, Dependencies dependencies)
    : m_history(history)
    , m_usage(usage)
    , m_dependencies(std::move(dependencies))
    , m_screenshots(m_dependencies.screenshots)
    , m_messages(history.messages())
{
}

std::optional<QString> ChatService::unsentText() const
{
    if (!canRetry() || !m_lastError || m_lastRequestRecordedUserMessage)
        return std::nullopt;
    return m_lastRequest->text;
}

bool ChatService::submit(const QString& text, Screenshot withScreenshot)
{
    Request request { text, withScreenshot };
    if (!canRun(request))
        return false;
    m_lastRequest = std::move(request);
    m_lastRequestRecordedUserMessage = false;
    run(AutoRetry::allowed);
    return true;
}

void ChatService::retryLast()
{
    if (canRetry())
        run(AutoRetry::allowed);
}

void ChatService::cancelStreaming()
{
    if (!m_isRunning)
        return;
    m_isRunning = false;
    m_stop.request_stop();
    if (const auto stream = std::exchange(m_stream, nullptr))
        stream->close();
    setStreamingPreview({});
    setStreaming(false);
    Q_EMIT activityChanged(false, false);
}

void ChatService::reload()
{
    m_messages = m_history.messages();
    Q_EMIT messagesChanged();
}

bool ChatService::canRun(const Request& request) const
{
    const auto wantsScreenshot = request.screenshot == Screenshot::with;
    return !m_isRunning && !(wantsScreenshot && m_screenshots.isTaking());
}

void ChatService::run(AutoRetry autoRetry)
{
    m_isRunning = true;
    m_stop = std::stop_source();
    Q_EMIT activityChanged(true, false);
    spawn(runTurn(autoRetry, m_stop.get_token()));
}

Task<> ChatService::runTurn(AutoRetry autoRetry, std::stop_token stop)
{
    const auto outcome = co_await performLastRequest();
    if (stop.stop_requested())
        co_return;
    if (outcome)
        co_await completeTurn(stop);
    else
        abandonTurn(outcome.error(), autoRetry);
}

Task<ChatService::Outcome> ChatService::performLastRequest()
{
    const auto request = *m_lastRequest;
    const auto userMessage =
        m_lastRequestRecordedUserMessage ? UserMessage::reuseLast : UserMessage::record;
    if (request.screenshot == Screenshot::with)
        co_return co_await sendWithScreenshot(request.text, userMessage);
    co_return co_await send(request.text, std::nullopt, userMessage);
}

Task<> ChatService::completeTurn(std::stop_token stop)
{
    if (onTurnComplete)
        co_await onTurnComplete();
    if (stop.stop_requested())
        co_return;
    m_isRunning = false;
    Q_EMIT activityChanged(false, true);
}

void ChatService::abandonTurn(const ChatError& error, AutoRetry autoRetry)
{
    m_isRunning = false;
    if (autoRetry == AutoRetry::allowed && isWorthRetrying(error)) {
        Log::line(QStringLiteral("buddy: request failed (%1); auto-retrying once")
                      .arg(loggable(*modelError(error))));
        run(AutoRetry::done);
        return;
    }
    Q_EMIT activityChanged(false, false);
}

Task<ChatService::Outcome> ChatService::send(
    QString text, std::optional<QByteArray> image, UserMessage userMessage)
{
    if (m_isStreaming)
        co_return Outcome();
    const auto stop = m_stop.get_token();
    const auto provider = co_await m_dependencies.mainProvider();
    if (stop.stop_requested())
        co_return failed(Cancelled());
    if (!provider) {
        setLastError(mainModelNotConfigured().description());
        co_return failed(LLMFailure(mainModelNotConfigured()));
    }
    const auto trimmed = text.trimmed();
    if (trimmed.isEmpty())
        co_return Outcome();

    setLastError(std::nullopt);
    setStreaming(true);
    setStreamingPreview({});
    Turn turn { userMessageFor(trimmed, image.has_value(), userMessage), std::move(image) };

    const auto reply = co_await requestReply(std::move(turn), stop);
    if (stop.stop_requested())
        co_return failed(Cancelled());
    if (reply)
        finishReply(*reply);
    else
        setLastError(description(std::get<LLMFailure>(reply.error())));
    setStreamingPreview({});
    setStreaming(false);
    if (!reply)
        co_return failed(reply.error());
    co_return Outcome();
}

Task<ChatService::Outcome> ChatService::sendWithScreenshot(QString text, UserMessage userMessage)
{
    if (!m_screenshots.isAvailable()) {
        setLastError(QStringLiteral("Screen capture is not available."));
        co_return Outcome();
    }
    const auto stop = m_stop.get_token();
    const auto screenshot = co_await m_screenshots.take();
    if (stop.stop_requested())
        co_return failed(Cancelled());
    if (!screenshot) {
        setLastError(ScreenshotTaker::explanation(screenshot.error()));
        co_return failed(screenshot.error());
    }
    setCaptureIndicator(screenshot->description);
    co_return co_await send(text, screenshot->jpegData, userMessage);
}

Task<ChatService::Reply> ChatService::requestReply(Turn turn, std::stop_token stop)
{
    const auto config = co_await m_dependencies.mainConfig();
    const auto situation = co_await m_dependencies.situationProvider();
    const auto systemPrompt = Prompts::mainAssistant({
        .memory = m_dependencies.residentMemory(),
        .situation = situation,
        .hasImage = turn.image.has_value(),
        .now = m_dependencies.clock(),
    });
    co_return co_await streamRouted(
        requestMessages(systemPrompt, turn), config.maxOutputTokens, stop);
}

Task<ChatService::Reply> ChatService::streamRouted(
    std::vector<LLMMessage> messages, int maxTokens, std::stop_token stop)
{
    auto lane = UsageLane::main;
    std::unique_ptr<LLMProvider> provider;
    if (hasImage(messages)) {
        provider = co_await m_dependencies.visionProvider();
        if (provider) {
            Log::line(QStringLiteral("buddy: routing image request to the vision model"));
            lane = UsageLane::vision;
        }
    }
    if (!provider)
        provider = co_await m_dependencies.mainProvider();
    if (!provider)
        co_return failed(LLMFailure(mainModelNotConfigured()));
    LLMRequest request {
        .messages = std::move(messages),
        .maxTokens = maxTokens,
        .temperature = lane == UsageLane::main ? 0.7 : 0.4,
    };
    co_return co_await stream(std::move(provider), std::move(request), lane, stop);
}

Task<ChatService::Reply> ChatService::stream(
    std::unique_ptr<LLMProvider> provider, LLMRequest request, UsageLane lane, std::stop_token stop)
{
    if (stop.stop_requested())
        co_return failed(Cancelled());
    const auto events = std::make_shared<LLMStream>(provider->streamChat(std::move(request)));
    m_stream = events;
    QString reply;
    std::optional<LLMUsage> usage;
    while (const auto event = co_await events->next()) {
        if (stop.stop_requested())
            co_return failed(Cancelled());
        handle(*event, reply, usage);
    }
    if (stop.stop_requested())
        co_return failed(Cancelled());
    m_stream = nullptr;
    if (events->error())
        co_return failed(*events->error());
    if (usage)
        addUsage(lane, *usage);
    co_return reply;
}

ChatMessage ChatService::userMessageFor(const QString& text, bool hasImage, UserMessage userMessage)
{
    if (userMessage == UserMessage::reuseLast) {
        auto newestFirst = m_history.messages() | std::views::reverse;
        const auto last =
            std::ranges::find(newestFirst, ChatMessage::Role::user, &ChatMessage::role);
        if (last != newestFirst.end())
            return *last;
    }
    ChatMessage message {
        .id = QUuid::createUuid(),
        .role = ChatMessage::Role::user,
        .text = text,
        .timestamp = m_dependencies.clock(),
        .hadImage = hasImage,
    };
    if (userMessage == UserMessage::record) {
        append(message);
        m_lastRequestRecordedUserMessage = true;
    }
    return message;
}

std::vector<LLMMessage> ChatService::requestMessages(
    const QString& systemPrompt, const Turn& turn) const
{
    std::vector<LLMMessage> messages { { .role = LLMMessage::Role::system,
        .content = systemPrompt } };
    for (const auto& entry : m_history.messages()) {
        if (entry.role == ChatMessage::Role::system)
            continue;
        const auto role = entry.role == ChatMessage::Role::user ? LLMMessage::Role::user
                                                                : LLMMessage::Role::assistant;
        messages.push_back({ .role = role, .content = entry.text });
        if (entry.id == turn.userMessage.id)
            messages.back().imageJPEG = turn.image;
    }
    return messages;
}

void ChatService::append(ChatMessage message)
{
    m_history.append(std::move(message));
    reload();
}

void ChatService::handle(
    const LLMStreamEvent& event, QString& reply, std::optional<LLMUsage>& usage)
{
    if (const auto* token = std::get_if<LLMToken>(&event)) {
        reply += token->text;
        m_streamingPreview += token->text;
        Q_EMIT streamingPreviewChanged();
    }
    if (const auto* reported = std::get_if<LLMUsage>(&event))
        usage = *reported;
}

void ChatService::addUsage(UsageLane lane, const LLMUsage& usage)
{
    if (lane == UsageLane::main)
        m_usage.addMainUsage(usage.promptTokens, usage.completionTokens);
    else
        m_usage.addVisionUsage(usage.promptTokens, usage.completionTokens);
}

void ChatService::finishReply(const QString& text)
{
    const auto trimmed = text.trimmed();
    append({
        .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = trimmed.isEmpty() ? QString::fromUtf8(emptyReplyText) : trimmed,
        .timestamp = m_dependencies.clock(),
    });
    setCaptureIndicator(std::nullopt);
}

void ChatService::setStreaming(bool isStreaming)
{
    if (std::exchange(m_isStreaming, isStreaming) != isStreaming)
        Q_EMIT isStreamingChanged();
}

void ChatService::setStreamingPreview(const QString& text)
{
    if (std::exchange(m_streamingPreview, text) != text)
        Q_EMIT streamingPreviewChanged();
}

void ChatService::setLastError(std::optional<QString> error)
{
    m_lastError = std::move(error);
    Q_EMIT lastErrorChanged();
}

void ChatService::setCaptureIndicator(std::optional<QString> indicator)
{
    m_captureIndicator = std::move(indicator);
    Q_EMIT captureIndicatorChanged();
}

} // namespace pobblewig
