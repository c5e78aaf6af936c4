#pragma once

#include "conversation/ChatTurn.h"
#include "conversation/TurnDisplay.h"
#include "conversation/TurnMessages.h"
#include "conversation/TurnProblem.h"
#include "conversation/attachments/Attachment.h"
#include "prompts/SituationSnapshot.h"

#include <QObject>

#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

namespace pobblewig {

/// Runs a turn of the conversation, from the submitted text to the assistant's message in the
/// history.
///
/// Only one turn runs at a time. The published values are for display; signals announce their
/// changes. Lives as long as the process.
class ChatService : public QObject {
    Q_OBJECT

public:
    /// What a turn needs besides the stores. Everything here must outlive the service.
    struct Surroundings {
        ModelProviding& models;
        /// Called for each turn.
        std::function<SituationSnapshot()> situation;
        /// Null if memory cannot be read.
        MemoryToolExecutor* toolExecutor = nullptr;
        ScreenAccess screen = {};
        /// How long the user may take to allow the model a picture.
        std::chrono::milliseconds patience = CaptureConsent::usualPatience;
        PlatformWording wording;
        /// How long to wait before a model that is still loading is asked again.
        std::chrono::milliseconds loadingPause = std::chrono::seconds(2);
        /// Where the user's models are described. Shown to the user only.
        QString environmentFile = {};
    };

    enum class Screenshot { without, with };
    enum class UserMessage { record, reuseLast };
    using Actions = std::vector<BuddyAction>;
    using Attachments = std::vector<Attachment>;
    using Outcome = tl::expected<Actions, ChatError>;

    /// `stores` and `moment` must outlive the service.
    ChatService(const Stores& stores, const Moment& moment, Surroundings surroundings);

    /// The whole transcript. What else changes it calls `reload`.
    const std::vector<ChatMessage>& messages() const { return m_messages.all(); }

    /// The visible part of the reply in progress; empty between replies.
    const QString& streamingPreview() const { return m_display.preview(); }
    bool isStreaming() const { return m_phase == Phase::streaming; }

    /// True from the submitted text until the reply and everything it triggers is done.
    bool isInTurn() const { return m_phase != Phase::idle; }

    /// The error of the last turn, as a text with all particulars.
    const std::optional<QString>& lastError() const { return m_problem.text(); }

    /// Why the last turn failed, and what helps.
    const TurnProblem& problem() const { return m_problem; }

    /// What the turn waits for, and what its model thinks.
    TurnWatch& watch() { return m_display.watch(); }

    /// The host of the server that the turn asks.
    QString askedHost() const { return m_router.asked().server.host(); }

    /// A line about the current or the last turn that is no error: that the model is still
    /// loading, or that it did not see the oldest messages.
    const std::optional<QString>& notice() const { return m_display.notice(); }

    /// Whether the newest message is a reply that was cut off or stopped, and no turn runs.
    bool canContinue() const;

    /// Whether this is a message of the user whose turn has failed since the launch.
    bool isUnanswered(const QUuid& message) const { return m_messages.isUnanswered(message); }

    /// The text that the user has begun to write, which the next launch finds again.
    const QString& draft() const { return m_messages.record().draft(); }
    void keepDraft(const QString& text) { m_messages.record().keepDraft(text); }

    /// A description of the screenshot while its turn runs.
    const std::optional<QString>& captureIndicator() const { return m_display.captureIndicator(); }

    /// Asks the user before the model looks at the screen by itself.
    CaptureConsent& captureConsent() { return m_captureConsent; }

    /// The tools of the latest round, with failures marked.
    const std::vector<QString>& lastToolCalls() const { return m_display.lastToolCalls(); }
    int totalToolCalls() const { return m_display.totalToolCalls(); }

    /// What the model would be told if the user said something now, besides the conversation.
    MainAssistantPrompt promptNow() { return prompt(UsageLane::main, false); }

    /// The messages of the conversation that would stand before what the user said.
    std::vector<LLMMessage> messagesNow() { return m_messages.record().messagesNow(); }

    /// The functions that a model would be offered, if it takes any.
    std::vector<LLMToolDefinition> functionsNow() { return tools({}).offered({}); }

    /// The text of a failed turn that was not added to the history.
    std::optional<QString> unsentText() const;

    /// What goes with `unsentText`.
    Attachments unsentAttachments() const;

    /// Whether `retryLast` has an effect. A turn whose message has left the history cannot be
    /// retried.
    bool canRetry() const { return m_lastRequest && canRun(*m_lastRequest); }

    /// Returns false and does nothing while a turn runs, or if this turn needs a picture while
    /// another one is still being taken.
    bool submit(const QString& text, Screenshot withScreenshot = Screenshot::without,
        Attachments attachments = {});

    /// Whether `takePicture` has an effect.
    bool canTakePicture() const { return !isInTurn() && !m_screenshots.isTaking(); }

    /// Takes a picture of the screen for the user, who chooses a part of it. The error is a text
    /// for the user.
    Task<tl::expected<CapturedScreenshot, QString>> takePicture();

    /// The newest question, if no turn runs and it can be asked in other words.
    std::optional<ChatMessage> changeableQuestion() const;

    /// The same as `submit`, but once the text is recorded, the question and what came of it are
    /// gone. A question that is no longer the newest stays.
    bool submitInstead(const QUuid& question, const QString& text, Attachments attachments = {});

    /// Whether no turn runs and the newest message is a reply that can be given again.
    bool canAnswerAgain() const;

    /// Asks for another reply in place of the newest one, which keeps the earlier texts. Until the
    /// other one is complete the old one remains in the history.
    void answerAgain();

    /// The reply that another one is about to replace, while that is streamed.
    const std::optional<QUuid>& replyInRevision() const { return m_messages.replyInRevision(); }

    /// Repeats the last turn without recording its user message twice.
    void retryLast();

    /// Asks again for the answer to a message that has none. One that others have followed is said
    /// again. Does nothing during a turn.
    void retry(const QUuid& message);

    /// Lets that model serve until the program ends, and retries.
    void retryWith(const QString& modelID);

    /// Asks the model to go on with a reply that was cut off or stopped.
    void continueReply();

    /// Ends the turn. What has arrived of the reply is kept.
    void cancelStreaming();

    /// Adds a message that the buddy writes by itself. It belongs to the active session, or to none
    /// while the memory is off.
    void say(const QString& text, std::optional<QUuid> relatedInterventionID = std::nullopt)
    {
        say({ .text = text, .relatedInterventionID = relatedInterventionID });
    }
    void say(const ChatRemark& remark);

    /// Sets the features' tools, once all features exist.
    void setTools(std::vector<Tool> ofFeatures)
    {
        m_tools = BuddyTools(std::move(ofFeatures), m.wording);
    }

    /// Announces that the whole transcript may have changed. The error of a turn whose message is
    /// gone goes with it.
    void reload();

    /// Runs a whole turn. A retry reuses the latest user message in the history, so that it is
    /// recorded only once, and does nothing without one.
    Task<Outcome> send(QString text, std::optional<QByteArray> image, UserMessage userMessage);

    /// Takes a picture of the screen and runs a turn with it.
    Task<Outcome> sendWithScreenshot(QString text, UserMessage userMessage);

    /// Says what will become of an action that a reply requests.
    ChatTurn::Judge judge = [](const auto&, const auto&) { return ActionVerdict(); };

    /// Awaited after the reply was added to the history, so that their messages follow it.
    std::function<Task<>(Actions actions)> onActions;
    std::function<Task<>()> onTurnComplete;

    /// Called before this question and what came of it leave the history.
    std::function<void(const QUuid& question)> onTakingBack = [](const auto&) {};

Q_SIGNALS:
    /// The messages from this index on have changed, or come and gone.
    void messagesChanged(size_t first);
    void streamingPreviewChanged();
    void isStreamingChanged();
    void lastErrorChanged();
    void noticeChanged();
    void captureIndicatorChanged();

    /// (true, false) when a turn starts, (false, true) after a success, (false, false) after a
    /// failure or cancellation.
    void activityChanged(bool working, bool succeeded);

private:
    enum class AutoRetry { allowed, done };
    /// `finishing` lasts from the reply until everything it triggers is done.
    enum class Phase { idle, preparing, streaming, finishing };

    struct Request {
        QString text;
        Screenshot screenshot = Screenshot::without;
        Attachments attachments = {};
        /// The question whose place its own takes.
        std::optional<QUuid> insteadOf = std::nullopt;
        /// The reply whose place its reply takes.
        std::optional<QUuid> answersAgain = std::nullopt;
    };

    bool canRun(const Request& request) const;
    bool begin(Request request);
    void run(AutoRetry autoRetry);
    Task<> runTurn(AutoRetry autoRetry, std::stop_token stop);
    Task<Outcome> performLastRequest();
    Task<> completeTurn(Actions actions, std::stop_token stop);
    void abandonTurn(const ChatError& error, AutoRetry autoRetry);

    Task<ChatTurn::Outcome> requestReply(
        ConversationRecord::Question question, bool hasScreenshot, std::stop_token stop);
    MainAssistantPrompt prompt(UsageLane lane, bool hasScreenshot);
    Task<ChatTurn::Input> turnInput(ConversationRecord::Question question, bool hasScreenshot);
    ToolRunner tools(const std::stop_token& stop);
    ChatTurn::Progress progress();

    Attachments attachments() const;
    ChatMessage recordQuestion(const QString& text, bool hasScreenshot);
    void forgetLostTurn();
    void finishReply(const ChatTurn::Result& result, std::optional<QUuid> askedIn);
    /// Keeps what has arrived of the reply.
    void keepStoppedReply();
    void failReply(const LLMFailure& failure, std::optional<QUuid> askedIn);

    bool isMemoryEnabled() const { return m_settings.settings().memoryEnabled; }
    /// The notes for the prompt; empty while the memory is off.
    QString residentMemory() const;

    void enter(Phase phase);

    const SettingsStore& m_settings;
    const MemoryTiers& m_memory;
    const Moment& m_moment;
    TurnMessages m_messages;
    Surroundings m;
    BuddyTools m_tools;
    ModelRouter m_router;
    ScreenshotTaker m_screenshots;
    CaptureConsent m_captureConsent;
    TurnProblem m_problem;
    TurnDisplay m_display;

    Phase m_phase = Phase::idle;
    std::optional<Request> m_lastRequest;
    std::stop_source m_stop;
};

} // namespace pobblewig
