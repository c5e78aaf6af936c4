#pragma once

#include "conversation/ChatTurnLogic.h"
#include "conversation/ModelRouter.h"
#include "conversation/ToolRunner.h"
#include "conversation/proposals/ActionVerdict.h"
#include "conversation/proposals/BuddyAction.h"
#include "foundation/Calendar.h"
#include "prompts/MainAssistantPrompt.h"

namespace pobblewig {

/// One turn from the first request to the final reply, with up to three rounds of tools, and a
/// reminder to a model that says nothing or claims an action that it did not request.
///
/// Lives until its task has ended.
class ChatTurn {
public:
    /// Says what will become of an action, given those that the turn has requested before.
    using Judge = std::function<ActionVerdict(
        const BuddyAction& action, const std::vector<BuddyAction>& requested)>;

    /// The constant input of the turn.
    struct Input {
        MainAssistantPrompt prompt;
        /// The history with the turn's own message, the user's newest. Without a system prompt.
        std::vector<LLMMessage> conversation;
        Judge judge;
        Calendar calendar = {};
    };

    /// Reports the turn's progress.
    struct Progress {
        /// Called when a reply or a round of tools begins. The preview of the last reply is then
        /// discarded.
        std::function<void()> replyBegins;
        std::function<void(const QString& token)> replyGrows;
        std::function<void(const QString& thought)> modelThinks;
        /// Called with all of a reply that has grown so far, which is no reply.
        std::function<void(const QString& thought)> replyWasThought;
        std::function<void()> toolsBegin;
        std::function<void(std::vector<MemoryToolResult> results)> toolsRan;
        /// Called when the model is still loading and the turn waits for it.
        std::function<void()> modelLoads;
        /// Called when so many of the conversation's oldest messages did not fit the model.
        std::function<void(size_t count)> oldestLeftOut;
    };

    struct Result {
        /// Empty if the reply consists of actions alone.
        QString text;
        /// Proposals have no `id` and `createdAt` yet.
        std::vector<BuddyAction> actions;
        bool tookScreenshot = false;
        /// The text ended at the length limit.
        bool isCutOff = false;
    };
    using Outcome = tl::expected<Result, ChatError>;

    ChatTurn(ModelRouter& router, ToolRunner tools, Input input, Progress progress,
        std::stop_token stop);

    Task<Outcome> run();

private:
    enum class Step { nativeRound, textRound, blockNudge, claimNudge, finish };
    using Failure = std::optional<ChatError>;

    Step nextStep() const;
    bool isUnfoundedClaim() const;
    bool hasMalformedBlock() const;
    Task<Failure> perform(Step step);
    Task<Failure> runNativeRound();
    Task<Failure> runTextRound();
    Task<Failure> nudge(QString lastReply, QString note, std::vector<LLMToolDefinition> tools);
    Task<ToolRunner::Outcome> runTools(std::vector<MemoryToolCall> calls, QStringView protocol);
    Task<Outcome> finish();

    /// Asks the model to continue and stores the answer in `m_reply`.
    Task<Failure> ask(std::vector<LLMToolDefinition> tools);
    Task<ModelRouter::Reply> request(std::vector<LLMToolDefinition> tools);
    bool leaveOutOldest();
    void collectActions(const std::vector<LLMToolCall>& calls);
    QString collectActions(const LLMToolCall& call);
    void collect(BuddyAction action, ActionVerdict::Kind verdict);
    std::vector<BuddyAction> allActions();
    void sayThatAPictureIsThere();
    /// Writes the app's context in front of the user's newest message.
    void tellContext();

    ModelRouter& m_router;
    ToolRunner m_tools;
    Input m_input;
    Progress m_progress;
    std::stop_token m_stop;

    std::vector<LLMMessage> m_messages;
    /// The index of the user's newest message, and its text.
    size_t m_question = 0;
    QString m_asked;
    ModelReply m_reply;
    std::vector<BuddyAction> m_actions;
    /// What cannot be done, unless the model corrects itself. The user learns why.
    std::vector<BuddyAction> m_refused;
    /// For each call of an action in `m_reply`.
    std::vector<QString> m_acknowledgements;
    int m_round = 0;
    /// Whether an action was requested that needs nothing more.
    bool m_hasRepeated = false;
    bool m_blockNudged = false;
    bool m_claimNudged = false;
};

} // namespace pobblewig
