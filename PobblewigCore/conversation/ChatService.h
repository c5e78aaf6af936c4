#pragma once

#include "conversation/ChatTurn.h"
#include "conversation/ReplyPreview.h"
#include "foundation/Time.h"
#include "memory/history/ChatHistoryStore.h"
#include "prompts/SituationSnapshot.h"
#include "wire/LaneConfigurations.h"

#include <QObject>

#include <functional>
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
    using ProviderFactory = ModelRouter::ProviderFactory;

    /// Asked anew for every use, so that a change of account or environment counts from the next
    /// request on.
    struct Dependencies {
        ProviderFactory mainProvider;
        ProviderFactory visionProvider;
        std::function<Task<MainModelConfig>()> mainConfig;
        std::function<Task<SituationSnapshot>()> situationProvider;
        /// The notes for the prompt; empty while the memory is off.
        std::function<QString()> residentMemory = [] { return QString(); };
        std::function<bool()> memoryEnabledProvider = [] { return true; };
        /// Null where the memory cannot be asked.
        std::function<MemoryToolExecutor*()> toolExecutor = [] { return nullptr; };
        std::function<std::optional<QUuid>()> sessionIDProvider = [] { return std::nullopt; };
        /// Which kinds of changes ask the user first.
        std::function<std::map<QString, bool>()> actionConfirmations = [] {
            return std::map<QString, bool>();
        };
        ScreenshotTaker::Dependencies screenshots = {};
        std::function<Calendar()> calendar = Calendar::current;
        Clock clock = systemNow;
    };

    enum class Screenshot { without, with };
    enum class UserMessage { record, reuseLast };
    using Actions = std::vector<BuddyAction>;
    using Outcome = tl::expected<Actions, ChatError>;

    ChatService(ChatHistoryStore& history, UsageCounter& usage, Dependencies dependencies);

    /// A copy of the history.
    const std::vector<ChatMessage>& messages() const { return m_messages; }

    /// What may be shown of the reply in progress; empty between replies.
    const QString& streamingPreview() const { return m_preview.text(); }
    bool isStreaming() const { return m_isStreaming; }

    /// From the submitted text to the end of what the reply leads to.
    bool isInTurn() const { return m_isRunning || m_isStreaming; }

    /// What went wrong with the last turn, for the user.
    const std::optional<QString>& lastError() const { return m_lastError; }

    /// What a screenshot shows, while its turn runs.
    const std::optional<QString>& captureIndicator() const { return m_captureIndicator; }

    /// The tools of the latest round, marked where they failed.
    const std::vector<QString>& lastToolCalls() const { return m_lastToolCalls; }
    int totalToolCalls() const { return m_totalToolCalls; }

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

    /// Awaited once a reply stands in the history, so that what they say comes after it.
    std::function<Task<>(Actions actions)> onActions;
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
    enum class AutoRetry { allowed, done };

    struct Request {
        QString text;
        Screenshot screenshot = Screenshot::without;
    };

    /// The turn's own user message, and the picture that goes with it.
    struct Turn {
        ChatMessage userMessage;
        std::optional<QByteArray> image;
        std::stop_token stop;
    };

    bool canRun(const Request& request) const;
    void run(AutoRetry autoRetry);
    Task<> runTurn(AutoRetry autoRetry, std::stop_token stop);
    Task<Outcome> performLastRequest();
    Task<> completeTurn(Actions actions, std::stop_token stop);
    void abandonTurn(const ChatError& error, AutoRetry autoRetry);

    Task<ChatTurn::Outcome> requestReply(Turn turn);
    Task<ChatTurn::Input> turnInput(Turn turn);
    ToolRunner tools(const std::stop_token& stop);
    ChatTurn::Progress progress();
    std::vector<LLMMessage> conversation(const Turn& turn) const;

    ChatMessage userMessageFor(const QString& text, bool hasImage, UserMessage userMessage);
    void append(ChatMessage message);
    void finishReply(const ChatTurn::Result& result, std::optional<QUuid> sessionID);

    void setStreaming(bool isStreaming);
    void beginPreview();
    void growPreview(const QString& token);
    void noteTools(const std::vector<MemoryToolResult>& results);
    void setLastError(std::optional<QString> error);
    void setCaptureIndicator(std::optional<QString> indicator);

    ChatHistoryStore& m_history;
    Dependencies m_dependencies;
    ModelRouter m_router;
    ScreenshotTaker m_screenshots;

    std::vector<ChatMessage> m_messages;
    ReplyPreview m_preview;
    bool m_isStreaming = false;
    std::optional<QString> m_lastError;
    std::optional<QString> m_captureIndicator;
    std::vector<QString> m_lastToolCalls;
    int m_totalToolCalls = 0;

    std::optional<Request> m_lastRequest;
    bool m_lastRequestRecordedUserMessage = false;
    bool m_isRunning = false;
    std::stop_source m_stop;
};

} // namespace pobblewig
