#pragma once

#include "conversation/ChatError.h"
#include "conversation/ScreenshotTaker.h"
#include "foundation/Task.h"
#include "foundation/Time.h"
#include "memory/ChatHistoryStore.h"
#include "memory/UsageCounter.h"
#include "prompts/SituationSnapshot.h"
#include "wire/LLMProvider.h"
#include "wire/LaneConfigurations.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace pobblewig {

/// Runs one conversational turn, from the submitted text to the assistant's message in the history.
///
/// One turn at a time. What is published here is for display; changes are announced by signals.
/// Lives as long as the process.
class ChatService : public QObject {
    Q_OBJECT

public:
    using ProviderFactory = std::function<Task<std::unique_ptr<LLMProvider>>()>;

    /// Asked anew for every use, so that a change of account or environment counts from the next
    /// request on.
    struct Dependencies {
        ProviderFactory mainProvider;
        ProviderFactory visionProvider;
        std::function<Task<MainModelConfig>()> mainConfig;
        std::function<Task<SituationSnapshot>()> situationProvider;
        /// The notes for the prompt; empty while the memory is off.
        std::function<QString()> residentMemory = [] { return QString(); };
        ScreenshotTaker::Dependencies screenshots = {};
        Clock clock = systemNow;
    };

    enum class Screenshot { without, with };
    enum class UserMessage { record, reuseLast };
    using Outcome = tl::expected<void, ChatError>;

    ChatService(ChatHistoryStore& history, UsageCounter& usage, Dependencies dependencies);

    /// A copy of the history.
    const std::vector<ChatMessage>& messages() const { return m_messages; }

    /// The text of the reply in progress; empty between replies.
    const QString& streamingPreview() const { return m_streamingPreview; }
    bool isStreaming() const { return m_isStreaming; }

    /// What went wrong with the last turn, for the user.
    const std::optional<QString>& lastError() const { return m_lastError; }

    /// What a screenshot shows, while its turn runs.
    const std::optional<QString>& captureIndicator() const { return m_captureIndicator; }

    /// The text of a failed turn that did not make it into the history.
    std::optional<QString> unsentText() const;

    /// Whether `retryLast` would do something.
    bool canRetry() const { return m_lastRequest && canRun(*m_lastRequest); }

    /// False, and nothing happens, while a turn runs, or while the screen is still being looked at
    /// for one that was stopped and this one wants a picture too.
    bool submit(const QString& text, Screenshot withScreenshot = Screenshot::without);

    /// Runs the last turn again without recording its user message twice.
    void retryLast();
    void cancelStreaming();

    /// Publishes the history anew.
    void reload();

    /// One whole turn. A retry reuses the latest user message of the history, so that it is never
    /// recorded twice.
    Task<Outcome> send(QString text, std::optional<QByteArray> image, UserMessage userMessage);

    /// Takes a picture of the screen and runs a turn with it.
    Task<Outcome> sendWithScreenshot(QString text, UserMessage userMessage);

    /// Awaited after a reply stands in the history.
    std::function<Task<>()> onTurnComplete;

Q_SIGNALS:
    void messagesChanged();
    void streamingPreviewChanged();
    void isStreamingChanged();
    void lastErrorChanged();
    void captureIndicatorChanged();

    /// (true, false) when a turn starts; (false, true) after a good one; (false, false) after a
    /// failure or a cancellation.
    void activityChanged(bool working, bool succeeded);

private:
    enum class UsageLane { main, vision };
    enum class AutoRetry { allowed, done };
    using Reply = tl::expected<QString, ChatError>;

    struct Request {
        QString text;
        Screenshot screenshot = Screenshot::without;
    };

    /// The turn's own user message, and the picture that goes with it.
    struct Turn {
        ChatMessage userMessage;
        std::optional<QByteArray> image;
    };

    bool canRun(const Request& request) const;
    void run(AutoRetry autoRetry);
    Task<> runTurn(AutoRetry autoRetry, std::stop_token stop);
    Task<Outcome> performLastRequest();
    Task<> completeTurn(std::stop_token stop);
    void abandonTurn(const ChatError& error, AutoRetry autoRetry);

    Task<Reply> requestReply(Turn turn, std::stop_token stop);
    Task<Reply> streamRouted(std::vector<LLMMessage> messages, int maxTokens, std::stop_token stop);
    Task<Reply> stream(std::unique_ptr<LLMProvider> provider, LLMRequest request, UsageLane lane,
        std::stop_token stop);

    ChatMessage userMessageFor(const QString& text, bool hasImage, UserMessage userMessage);
    std::vector<LLMMessage> requestMessages(const QString& systemPrompt, const Turn& turn) const;
    void append(ChatMessage message);
    void handle(const LLMStreamEvent& event, QString& reply, std::optional<LLMUsage>& usage);
    void addUsage(UsageLane lane, const LLMUsage& usage);
    void finishReply(const QString& text);

    void setStreaming(bool isStreaming);
    void setStreamingPreview(const QString& text);
    void setLastError(std::optional<QString> error);
    void setCaptureIndicator(std::optional<QString> indicator);

    ChatHistoryStore& m_history;
    UsageCounter& m_usage;
    Dependencies m_dependencies;
    ScreenshotTaker m_screenshots;

    std::vector<ChatMessage> m_messages;
    QString m_streamingPreview;
    bool m_isStreaming = false;
    std::optional<QString> m_lastError;
    std::optional<QString> m_captureIndicator;

    std::optional<Request> m_lastRequest;
    bool m_lastRequestRecordedUserMessage = false;
    bool m_isRunning = false;
    std::stop_source m_stop;
    std::shared_ptr<LLMStream> m_stream;
};

} // namespace pobblewig
