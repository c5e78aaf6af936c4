#pragma once

#include "conversation/ChatTurn.h"
#include "conversation/ReplyPreview.h"
#include "features/Stores.h"
#include "foundation/Moment.h"
#include "memory/MemoryTiers.h"
#include "memory/history/ChatHistoryStore.h"
#include "prompts/SituationSnapshot.h"

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
    /// What a turn draws on beside the stores. All of it outlives the service.
    struct Surroundings {
        ModelProviding& models;
        /// Asked for each turn.
        std::function<Task<SituationSnapshot>()> situation;
        /// Null where the memory cannot be asked.
        MemoryToolExecutor* toolExecutor = nullptr;
        ScreenAccess screen = {};
        PlatformWording wording;
    };

    enum class Screenshot { without, with };
    enum class UserMessage { record, reuseLast };
    using Actions = std::vector<BuddyAction>;
    using Outcome = tl::expected<Actions, ChatError>;

    /// `stores` and `moment` outlive the service.
    ChatService(const Stores& stores, const Moment& moment, Surroundings surroundings);

    /// A copy of the history.
    const std::vector<ChatMessage>& messages() const { return m_messages; }

    /// What may be shown of the reply in progress; empty between replies.
    const QString& streamingPreview() const { return m_preview.text(); }
    bool isStreaming() const { return m_phase == Phase::streaming; }

    /// From the submitted text to the end of what the reply leads to.
    bool isInTurn() const { return m_phase != Phase::idle; }

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

    /// Adds what the buddy says by itself to the conversation. The message belongs to the active
    /// session, or to none while the memory is off.
    void say(const QString& text, std::optional<QUuid> relatedInterventionID = std::nullopt);

    /// What the features let a model call, once they are all there.
    void setTools(std::vector<Tool> ofFeatures)
    {
        m_tools = BuddyTools(std::move(ofFeatures), m.wording);
    }

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
    /// `finishing` is the time from the reply to the end of what it leads to.
    enum class Phase { idle, preparing, streaming, finishing };

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

    /// The active session; nothing while the memory is off.
    std::optional<QUuid> sessionID() const;
    bool isMemoryEnabled() const { return m_settings.settings().memoryEnabled; }
    /// The notes for the prompt; empty while the memory is off.
    QString residentMemory() const;

    void enter(Phase phase);
    void beginPreview();
    void growPreview(const QString& token);
    void noteTools(const std::vector<MemoryToolResult>& results);
    void setLastError(std::optional<QString> error);
    void setCaptureIndicator(std::optional<QString> indicator);

    const SettingsStore& m_settings;
    const MemoryTiers& m_memory;
    ChatHistoryStore& m_history;
    const Moment& m_moment;
    Surroundings m;
    BuddyTools m_tools;
    ModelRouter m_router;
    ScreenshotTaker m_screenshots;

    std::vector<ChatMessage> m_messages;
    ReplyPreview m_preview;
    Phase m_phase = Phase::idle;
    std::optional<QString> m_lastError;
    std::optional<QString> m_captureIndicator;
    std::vector<QString> m_lastToolCalls;
    int m_totalToolCalls = 0;

    std::optional<Request> m_lastRequest;
    bool m_lastRequestRecordedUserMessage = false;
    std::stop_source m_stop;
};

} // namespace pobblewig
