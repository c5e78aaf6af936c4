#include "conversation/ChatTurn.h"

#include "conversation/ActionParser.h"
#include "conversation/ContextLogic.h"
#include "conversation/proposals/ActionTools.h"
#include "conversation/proposals/ProposalLogic.h"
#include "foundation/Log.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

using Role = LLMMessage::Role;

constexpr auto tangledUp = "I got tangled up in my own tools there — mind asking that again?";

/// A model can give a function any name, including its reply.
QString loggable(const QString& name)
{
    const auto isName = name.size() <= 40
        && std::ranges::all_of(name, [](QChar c) { return c == u'_' || (c >= u'a' && c <= u'z'); });
    return isName ? name : QStringLiteral("(unknown tool)");
}

size_t newestOfUser(const std::vector<LLMMessage>& messages)
{
    const auto newest =
        std::ranges::find(messages.rbegin(), messages.rend(), Role::user, &LLMMessage::role);
    return size_t(std::distance(newest, messages.rend())) - 1;
}

void logTools(const std::vector<MemoryToolResult>& results, QStringView protocol)
{
    QStringList names;
    for (const auto& result : results)
        names.append(loggable(result.name));
    Log::line(QStringLiteral("buddy: tools%1: %2").arg(protocol, names.join(QStringLiteral(", "))));
}

} // namespace

ChatTurn::ChatTurn(
    ModelRouter& router, ToolRunner tools, Input input, Progress progress, std::stop_token stop)
    : m_router(router)
    , m_tools(std::move(tools))
    , m_input(std::move(input))
    , m_progress(std::move(progress))
    , m_stop(std::move(stop))
    , m_messages { { .role = Role::system, .content = Prompts::mainAssistant(m_input.prompt) } }
{
    std::ranges::move(m_input.conversation, std::back_inserter(m_messages));
    m_question = newestOfUser(m_messages);
    m_asked = m_messages[m_question].content;
    tellContext();
}

Task<ChatTurn::Outcome> ChatTurn::run()
{
    auto failure = co_await ask(m_tools.offered({}));
    while (!failure) {
        const auto step = nextStep();
        if (step == Step::finish)
            co_return co_await finish();
        failure = co_await perform(step);
    }
    co_return tl::unexpected(*std::move(failure));
}

ChatTurn::Step ChatTurn::nextStep() const
{
    if (hasMalformedBlock())
        return Step::blockNudge;
    if (m_round == ChatTurnLogic::maxRounds)
        return Step::finish;
    if (!m_reply.toolCalls.empty()) {
        const auto readsNothing = ChatTurnLogic::retrievalCalls(m_reply.toolCalls).empty();
        return readsNothing || m_tools.isAvailable() ? Step::nativeRound : Step::finish;
    }
    if (m_tools.isAvailable() && !ActionParser::parseToolCalls(m_reply.text).calls.empty())
        return Step::textRound;
    return isUnfoundedClaim() ? Step::claimNudge : Step::finish;
}

bool ChatTurn::hasMalformedBlock() const
{
    return !m_blockNudged && m_reply.toolCalls.empty()
        && ActionParser::parse(m_reply.text, m_input.calendar).isMalformed;
}

bool ChatTurn::isUnfoundedClaim() const
{
    if (m_claimNudged || m_hasRepeated || !m_actions.empty())
        return false;
    const auto parsed = ActionParser::parse(m_reply.text, m_input.calendar);
    return parsed.actions.empty() && ChatTurnLogic::claimsActionWithoutCalling(parsed.displayText);
}

Task<ChatTurn::Failure> ChatTurn::perform(Step step)
{
    if (step == Step::nativeRound)
        return runNativeRound();
    if (step == Step::textRound)
        return runTextRound();
    if (step == Step::blockNudge) {
        m_blockNudged = true;
        Log::line(QStringLiteral("buddy: malformed control block; asking once more"));
        return nudge(m_reply.text, ChatTurnLogic::blockNudge.toString(),
            m_tools.offered(m_tools.expanded()));
    }
    m_claimNudged = true;
    Log::line(QStringLiteral("buddy: reply claimed an app action with no call; nudging once (reply "
                             "length: %1)")
                  .arg(m_reply.text.size()));
    return nudge(m_reply.text, ChatTurnLogic::claimNudge(m_input.prompt.tools.actionNames),
        m_tools.offered(m_tools.expanded()));
}

Task<ChatTurn::Failure> ChatTurn::runNativeRound()
{
    const auto calls = m_reply.toolCalls;
    const auto outcome = co_await runTools(ChatTurnLogic::retrievalCalls(calls), u" (native)");
    if (m_stop.stop_requested())
        co_return Cancelled();
    m_messages.push_back({ .role = Role::assistant, .content = m_reply.text, .toolCalls = calls });
    auto answers = ChatTurnLogic::toolMessages(calls, outcome.results, m_acknowledgements);
    std::ranges::move(answers, std::back_inserter(m_messages));
    if (outcome.freshScreenshot) {
        sayThatAPictureIsThere();
        // Tool messages carry no pictures.
        m_messages.push_back({ .role = Role::user,
            .content = ChatTurnLogic::screenshotAttached.toString(),
            .images = { *m_tools.toolScreenshot() } });
    }
    ++m_round;
    co_return co_await ask(m_tools.offered(m_tools.expanded()));
}

Task<ChatTurn::Failure> ChatTurn::runTextRound()
{
    const auto request = ActionParser::parseToolCalls(m_reply.text);
    auto calls = request.calls;
    calls.resize(std::min(calls.size(), ChatTurnLogic::maxCallsPerReply));
    const auto outcome = co_await runTools(std::move(calls), u"");
    if (m_stop.stop_requested())
        co_return Cancelled();
    if (outcome.freshScreenshot)
        sayThatAPictureIsThere();
    const auto said = request.displayText.value_or(QString());
    m_messages.push_back({ .role = Role::assistant,
        .content =
            said.isEmpty() ? QStringLiteral("(gathering context before answering)") : said });
    m_messages.push_back({ .role = Role::user,
        .content = ChatTurnLogic::toolResultsText(outcome.results, m_round) });
    if (outcome.freshScreenshot)
        m_messages.back().images = { *m_tools.toolScreenshot() };
    ++m_round;
    co_return co_await ask(m_tools.offered({}));
}

Task<ChatTurn::Failure> ChatTurn::nudge(
    QString lastReply, QString note, std::vector<LLMToolDefinition> tools)
{
    m_messages.push_back({ .role = Role::assistant, .content = std::move(lastReply) });
    m_messages.push_back({ .role = Role::user, .content = std::move(note) });
    return ask(std::move(tools));
}

Task<ToolRunner::Outcome> ChatTurn::runTools(
    std::vector<MemoryToolCall> calls, QStringView protocol)
{
    m_progress.replyBegins();
    m_progress.toolsBegin();
    const auto isEmpty = calls.empty();
    auto outcome = co_await m_tools.runRetrieval(std::move(calls));
    if (isEmpty || m_stop.stop_requested())
        co_return outcome;
    m_progress.toolsRan(outcome.results);
    logTools(outcome.results, protocol);
    co_return outcome;
}

Task<ChatTurn::Outcome> ChatTurn::finish()
{
    auto parsed = ActionParser::parse(m_reply.text, m_input.calendar);
    if (parsed.displayText.isEmpty() && parsed.actions.empty() && m_actions.empty()) {
        Log::line(QStringLiteral("buddy: empty/control-only reply; nudging (reply length: %1)")
                      .arg(m_reply.text.size()));
        const auto isBlank = m_reply.text.trimmed().isEmpty();
        const auto said = isBlank ? QStringLiteral("(empty reply)") : m_reply.text;
        auto failure =
            co_await nudge(said, ChatTurnLogic::emptyReplyNudge.toString(), m_tools.offered({}));
        if (failure)
            co_return tl::unexpected(*std::move(failure));
        parsed = ActionParser::parse(m_reply.text, m_input.calendar);
    }
    std::ranges::move(parsed.actions, std::back_inserter(m_actions));
    auto actions = allActions();
    const auto isConfused = parsed.displayText.isEmpty() && actions.empty();
    co_return Result {
        .text = isConfused ? QString::fromUtf8(tangledUp) : parsed.displayText,
        .actions = std::move(actions),
        .tookScreenshot = m_tools.toolScreenshot().has_value(),
        .isCutOff = m_reply.end.isCutOff && !parsed.displayText.isEmpty(),
    };
}

Task<ChatTurn::Failure> ChatTurn::ask(std::vector<LLMToolDefinition> tools)
{
    auto reply = co_await request(tools);
    for (int attempt = 0; attempt < ContextLogic::mostAttempts && !reply; ++attempt) {
        if (complaint(reply.error()) != ServerComplaint::contextOverflow || !leaveOutOldest())
            break;
        reply = co_await request(tools);
    }
    if (!reply)
        co_return reply.error();
    m_reply = *std::move(reply);
    if (m_reply.toolCalls.size() > ChatTurnLogic::maxCallsPerReply)
        m_reply.toolCalls.resize(ChatTurnLogic::maxCallsPerReply);
    collectActions(m_reply.toolCalls);
    co_return std::nullopt;
}

Task<ModelRouter::Reply> ChatTurn::request(std::vector<LLMToolDefinition> tools)
{
    m_progress.replyBegins();
    // The user may have switched it off during the turn.
    if (!m_tools.isMemoryEnabled()) {
        m_input.prompt.forgetMemory();
        m_messages.front().content = Prompts::mainAssistant(m_input.prompt);
    }
    return m_router.streamRouted({ .messages = m_messages,
                                     .tools = std::move(tools),
                                     .onToken = m_progress.replyGrows,
                                     .onThought = m_progress.modelThinks,
                                     .onTakenBack = m_progress.replyWasThought,
                                     .onLoading = m_progress.modelLoads },
        m_stop);
}

bool ChatTurn::leaveOutOldest()
{
    const auto [first, count] = ContextLogic::oldestPart(m_messages, m_question);
    if (count == 0)
        return false;
    const auto begin = m_messages.begin() + ptrdiff_t(first);
    m_messages.erase(begin, begin + ptrdiff_t(count));
    if (first < m_question) {
        m_question -= count;
        m_progress.oldestLeftOut(count);
    }
    Log::line(QStringLiteral("buddy: the request is too long; asking again without %1 messages")
                  .arg(count));
    return true;
}

void ChatTurn::collectActions(const std::vector<LLMToolCall>& calls)
{
    m_acknowledgements.clear();
    for (const auto& call : calls) {
        if (!call.isBroken && ActionTools::isAction(call.name))
            m_acknowledgements.push_back(collectActions(call));
    }
}

QString ChatTurn::collectActions(const LLMToolCall& call)
{
    auto actions = ActionParser::actions(call, m_input.calendar);
    if (actions.empty())
        Log::line(QStringLiteral("buddy: dropped action call %1 (%2 characters of arguments)")
                      .arg(call.name)
                      .arg(call.argumentsJSON.size()));
    std::vector<ActionVerdict> verdicts;
    for (const auto& action : actions) {
        verdicts.push_back(m_input.judge(action, m_actions));
        collect(action, verdicts.back().kind);
    }
    return ChatTurnLogic::acknowledgement(actions, verdicts);
}

void ChatTurn::collect(BuddyAction action, ActionVerdict::Kind verdict)
{
    using Kind = ActionVerdict::Kind;
    const auto isRepeated =
        verdict == Kind::waiting || verdict == Kind::done || verdict == Kind::dismissed;
    m_hasRepeated |= isRepeated;
    if (isRepeated || verdict == Kind::idTaken)
        return;
    std::erase_if(m_refused,
        [&](const auto& refused) { return ProposalLogic::haveSameIdentity(refused, action); });
    auto& actions = verdict == Kind::refused ? m_refused : m_actions;
    actions.push_back(std::move(action));
}

std::vector<BuddyAction> ChatTurn::allActions()
{
    auto actions = std::move(m_actions);
    std::ranges::move(m_refused, std::back_inserter(actions));
    return ProposalLogic::dedupedActions(std::move(actions));
}

void ChatTurn::sayThatAPictureIsThere()
{
    m_input.prompt.hasImage = true;
    tellContext();
}

void ChatTurn::tellContext()
{
    m_messages[m_question].content = Prompts::appContext(m_input.prompt) + m_asked;
}

} // namespace pobblewig
