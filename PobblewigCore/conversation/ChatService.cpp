#include "conversation/ChatService.h"

#include "conversation/ProblemLogic.h"
#include "conversation/RevisionLogic.h"
#include "conversation/attachments/AttachmentLogic.h"
#include "foundation/Log.h"

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

LLMError mainModelNotConfigured()
{
    return LLMError::notConfigured(QStringLiteral("main model not configured"));
}

QString captureUnavailable()
{
    return QStringLiteral("Screen capture is not available.");
}

tl::unexpected<ChatError> failed(ChatError error)
{
    return tl::unexpected(std::move(error));
}

} // namespace

ChatService::ChatService(const Stores& stores, const Moment& moment, Surroundings surroundings)
    : m_settings(stores.settings)
    , m_memory(stores.memory)
    , m_moment(moment)
    , m_messages(stores, moment)
    , m(std::move(surroundings))
    , m_tools({}, m.wording)
    , m_router(stores.usage, m.models, m.loadingPause)
    , m_screenshots(m.screen, stores.settings, m.wording)
    , m_captureConsent(stores.settings, moment, m.patience)
    , m_problem(m.models, moment, m.environmentFile)
    , m_display(moment)
{
    connect(&m_problem, &TurnProblem::changed, this, &ChatService::lastErrorChanged);
    connect(&m_messages, &TurnMessages::changed, this, &ChatService::messagesChanged);
    connect(&m_messages, &TurnMessages::askedLost, this, &ChatService::forgetLostTurn);
    connect(&m_display, &TurnDisplay::previewChanged, this, &ChatService::streamingPreviewChanged);
    connect(&m_display, &TurnDisplay::noticeChanged, this, &ChatService::noticeChanged);
    connect(&m_display, &TurnDisplay::captureIndicatorChanged, this,
        &ChatService::captureIndicatorChanged);
}

std::optional<QString> ChatService::unsentText() const
{
    if (!canRetry() || !lastError() || m_messages.asked())
        return std::nullopt;
    return m_lastRequest->text;
}

ChatService::Attachments ChatService::unsentAttachments() const
{
    return unsentText() ? attachments() : Attachments();
}

bool ChatService::submit(const QString& text, Screenshot withScreenshot, Attachments attachments)
{
    return begin(
        { .text = text, .screenshot = withScreenshot, .attachments = std::move(attachments) });
}

Task<tl::expected<CapturedScreenshot, QString>> ChatService::takePicture()
{
    if (!canTakePicture() || !m_screenshots.isAvailable())
        co_return tl::unexpected(captureUnavailable());
    const auto picture = co_await m_screenshots.take();
    if (!picture)
        co_return tl::unexpected(m_screenshots.explanation(picture.error()));
    co_return *picture;
}

std::optional<ChatMessage> ChatService::changeableQuestion() const
{
    return isInTurn() ? std::nullopt : RevisionLogic::changeableQuestion(messages());
}

bool ChatService::submitInstead(const QUuid& question, const QString& text, Attachments attachments)
{
    const auto newest = changeableQuestion();
    const auto isNewest = newest && newest->id == question;
    return begin({ .text = text,
        .attachments = std::move(attachments),
        .insteadOf = isNewest ? std::optional(question) : std::nullopt });
}

bool ChatService::canAnswerAgain() const
{
    return !isInTurn() && RevisionLogic::answerableAgain(messages());
}

void ChatService::answerAgain()
{
    if (!canAnswerAgain())
        return;
    const auto [question, reply] = *RevisionLogic::answerableAgain(messages());
    m_lastRequest = Request { .text = question.text, .answersAgain = reply.id };
    m_messages.setAsked(question.id);
    run(AutoRetry::allowed);
}

void ChatService::retryLast()
{
    if (canRetry())
        run(AutoRetry::allowed);
}

void ChatService::retry(const QUuid& message)
{
    if (m_messages.asked() == message && canRetry()) {
        retryLast();
        return;
    }
    const auto failed = std::ranges::find(messages(), message, &ChatMessage::id);
    if (!isUnanswered(message) || failed == messages().end())
        return;
    const auto text = AttachmentLogic::withoutLine(failed->text);
    if (submit(text, Screenshot::without, m_messages.attachments(message)))
        m_messages.setAnswered(message);
}

void ChatService::retryWith(const QString& modelID)
{
    m_problem.chooseModel(modelID);
    retryLast();
}

bool ChatService::canContinue() const
{
    return !isInTurn() && !messages().empty() && messages().back().isUnfinished();
}

void ChatService::continueReply()
{
    if (!canContinue())
        return;
    submit(messages().back().isStopped() ? tr("Please go on where I stopped you.")
                                         : tr("Please go on where your last message was cut off."));
}

void ChatService::cancelStreaming()
{
    if (!isInTurn())
        return;
    m_stop.request_stop();
    m_router.close();
    keepStoppedReply();
    m_display.emptyPreview();
    enter(Phase::idle);
    Q_EMIT activityChanged(false, false);
}

void ChatService::say(const ChatRemark& remark)
{
    m_messages.say(remark);
}

void ChatService::reload()
{
    m_messages.reload();
}

bool ChatService::canRun(const Request& request) const
{
    const auto wantsScreenshot = request.screenshot == Screenshot::with;
    return !isInTurn() && !(wantsScreenshot && m_screenshots.isTaking());
}

bool ChatService::begin(Request request)
{
    if (!canRun(request))
        return false;
    m_lastRequest = std::move(request);
    m_messages.setAsked(std::nullopt);
    run(AutoRetry::allowed);
    return true;
}

void ChatService::run(AutoRetry autoRetry)
{
    enter(Phase::preparing);
    m_stop = std::stop_source();
    Q_EMIT activityChanged(true, false);
    spawn(runTurn(autoRetry, m_stop.get_token()));
}

Task<> ChatService::runTurn(AutoRetry autoRetry, std::stop_token stop)
{
    auto outcome = co_await performLastRequest();
    if (stop.stop_requested())
        co_return;
    if (outcome)
        co_await completeTurn(*std::move(outcome), stop);
    else
        abandonTurn(outcome.error(), autoRetry);
}

Task<ChatService::Outcome> ChatService::performLastRequest()
{
    const auto request = *m_lastRequest;
    const auto userMessage = m_messages.asked() ? UserMessage::reuseLast : UserMessage::record;
    if (request.screenshot == Screenshot::with)
        co_return co_await sendWithScreenshot(request.text, userMessage);
    co_return co_await send(request.text, std::nullopt, userMessage);
}

Task<> ChatService::completeTurn(Actions actions, std::stop_token stop)
{
    if (onActions && !actions.empty())
        co_await onActions(std::move(actions));
    if (onTurnComplete)
        co_await onTurnComplete();
    if (stop.stop_requested())
        co_return;
    enter(Phase::idle);
    Q_EMIT activityChanged(false, true);
}

void ChatService::abandonTurn(const ChatError& error, AutoRetry autoRetry)
{
    enter(Phase::idle);
    const auto* model = modelError(error);
    const auto isWorthRetrying = model && ProblemLogic::isWorthRetrying(*model);
    if (autoRetry == AutoRetry::allowed && isWorthRetrying && canRetry()) {
        Log::line(
            QStringLiteral("buddy: request failed (%1); auto-retrying once").arg(loggable(*model)));
        run(AutoRetry::done);
        return;
    }
    if (m_messages.asked() && canRetry() && !m_lastRequest->answersAgain)
        m_messages.setUnanswered(*m_messages.asked(), attachments());
    Q_EMIT activityChanged(false, false);
}

Task<ChatService::Outcome> ChatService::send(
    QString text, std::optional<QByteArray> image, UserMessage userMessage)
{
    if (isStreaming())
        co_return Outcome();
    const auto nextPhase = isInTurn() ? Phase::finishing : Phase::idle;
    const auto stop = m_stop.get_token();
    const auto provider = co_await m.models.makeProvider(ModelUse::main);
    if (stop.stop_requested())
        co_return failed(Cancelled());
    if (!provider) {
        m_problem.report(mainModelNotConfigured(), {});
        co_return failed(LLMFailure(mainModelNotConfigured()));
    }
    const auto trimmed = text.trimmed();
    const auto earlier =
        userMessage == UserMessage::reuseLast ? m_messages.record().newestQuestion() : std::nullopt;
    if (trimmed.isEmpty() || (userMessage == UserMessage::reuseLast && !earlier))
        co_return Outcome();

    m_problem.clear();
    m_display.begin();
    enter(Phase::streaming);
    const auto asked = earlier ? *earlier : recordQuestion(trimmed, image.has_value());
    const auto askedIn = asked.sessionID;
    m_messages.setAnswered(asked.id);
    if (earlier && m_lastRequest)
        m_messages.setReplyInRevision(m_lastRequest->answersAgain);

    auto outcome = co_await requestReply(
        m_messages.question(asked, attachments(), image), image.has_value(), stop);
    if (stop.stop_requested())
        co_return failed(Cancelled());
    if (outcome)
        finishReply(*outcome, askedIn);
    else
        failReply(std::get<LLMFailure>(outcome.error()), askedIn);
    m_messages.setReplyInRevision(std::nullopt);
    m_display.emptyPreview();
    enter(nextPhase);
    if (!outcome)
        co_return failed(outcome.error());
    co_return std::move(outcome->actions);
}

Task<ChatService::Outcome> ChatService::sendWithScreenshot(QString text, UserMessage userMessage)
{
    if (!m_screenshots.isAvailable()) {
        m_problem.report(captureUnavailable());
        co_return Outcome();
    }
    const auto stop = m_stop.get_token();
    const auto screenshot = co_await m_screenshots.take();
    if (stop.stop_requested())
        co_return failed(Cancelled());
    if (!screenshot) {
        m_problem.report(m_screenshots.explanation(screenshot.error()));
        co_return failed(screenshot.error());
    }
    m_display.setCaptureIndicator(screenshot->description);
    co_return co_await send(text, screenshot->jpegData, userMessage);
}

Task<ChatTurn::Outcome> ChatService::requestReply(
    ConversationRecord::Question question, bool hasScreenshot, std::stop_token stop)
{
    auto input = co_await turnInput(std::move(question), hasScreenshot);
    if (stop.stop_requested())
        co_return failed(Cancelled());
    ChatTurn chatTurn(m_router, tools(stop), std::move(input), progress(), stop);
    co_return co_await chatTurn.run();
}

MainAssistantPrompt ChatService::prompt(UsageLane lane, bool hasScreenshot)
{
    return {
        .memory = residentMemory(),
        .situation = m.situation(),
        .hasImage = hasScreenshot,
        .toolsAvailable = tools({}).isAvailable(),
        .nativeTools = m_router.offersNativeTools(lane),
        .tools = m_tools.lines(),
        .now = m_moment.now(),
        .wording = m.wording,
    };
}

Task<ChatTurn::Input> ChatService::turnInput(
    ConversationRecord::Question question, bool hasScreenshot)
{
    const auto lane = co_await m_router.lane(!question.images.empty());
    co_return ChatTurn::Input {
        .prompt = prompt(lane, hasScreenshot),
        .conversation = m_messages.record().request(question),
        .judge = judge,
        .calendar = m_moment.calendar(),
    };
}

ToolRunner ChatService::tools(const std::stop_token& stop)
{
    return ToolRunner({
        .tools = m_tools,
        .executor = m.toolExecutor,
        .isMemoryEnabled = [this] { return isMemoryEnabled(); },
        .stop = stop,
        .screenshots = m_screenshots,
        .consent = m_captureConsent,
        .captured =
            [this, stop](const QString& description) {
                if (!stop.stop_requested())
                    m_display.setCaptureIndicator(description);
            },
    });
}

ChatTurn::Progress ChatService::progress()
{
    auto progress = m_display.progress();
    progress.oldestLeftOut = [this, show = progress.oldestLeftOut](size_t count) {
        m_messages.record().leaveOut(count);
        show(count);
    };
    return progress;
}

ChatService::Attachments ChatService::attachments() const
{
    return m_lastRequest ? m_lastRequest->attachments : Attachments();
}

ChatMessage ChatService::recordQuestion(const QString& text, bool hasScreenshot)
{
    if (const auto instead = m_lastRequest ? m_lastRequest->insteadOf : std::nullopt) {
        onTakingBack(*instead);
        m_messages.takeBack(*instead);
    }
    return m_messages.ask(text, attachments(), hasScreenshot);
}

void ChatService::forgetLostTurn()
{
    m_lastRequest.reset();
    m_problem.clear();
}

void ChatService::finishReply(const ChatTurn::Result& result, std::optional<QUuid> askedIn)
{
    m_display.setCaptureIndicator(std::nullopt);
    if (m_lastRequest)
        m_lastRequest->attachments.clear();
    // Of actions alone, the notes of what became of them speak.
    if (result.text.isEmpty())
        return;
    m_messages.reply({
        .text = result.text,
        .askedIn = askedIn,
        .hadImage = result.tookScreenshot,
        .isCutOff = result.isCutOff,
    });
}

void ChatService::keepStoppedReply()
{
    if (m_messages.replyInRevision()) {
        m_messages.setReplyInRevision(std::nullopt);
        return;
    }
    const auto partial = m_display.preview().trimmed();
    const auto question = m_messages.record().newestQuestion();
    // What was attached to it can be sent again.
    if (partial.isEmpty() && m_messages.asked() && !attachments().empty())
        m_messages.setUnanswered(*m_messages.asked(), attachments());
    if (partial.isEmpty() || !question)
        return;
    // It is continued rather than asked for again.
    m_lastRequest.reset();
    m_messages.reply({ .text = partial, .askedIn = question->sessionID, .isStopped = true });
}

void ChatService::failReply(const LLMFailure& failure, std::optional<QUuid> askedIn)
{
    const auto partial = m_display.preview().trimmed();
    if (!partial.isEmpty() && !m_messages.replyInRevision()) {
        finishReply({ .text = partial, .isCutOff = true }, askedIn);
        // It is continued rather than asked for again.
        m_lastRequest.reset();
    }
    if (complaint(failure) == ServerComplaint::contextOverflow)
        m_display.setNotice(std::nullopt);
    m_problem.report(failure, m_router.asked());
}

QString ChatService::residentMemory() const
{
    if (!isMemoryEnabled())
        return {};
    return m_memory.notes.residentMemory(MemoryStore::hardCapTokens, m_moment.now());
}

void ChatService::enter(Phase phase)
{
    const auto wasStreaming = isStreaming();
    m_phase = phase;
    if (!isStreaming())
        m_display.endWaiting();
    if (isStreaming() != wasStreaming)
        Q_EMIT isStreamingChanged();
}

} // namespace pobblewig
