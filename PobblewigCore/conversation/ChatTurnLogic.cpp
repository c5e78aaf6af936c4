#include "conversation/ChatTurnLogic.h"

#include "conversation/ActionParser.h"
#include "conversation/proposals/ActionTools.h"
#include "conversation/proposals/ProposalLogic.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

/// Ordered from "no change" to "must wait"; of several, the highest counts.
enum class Consequence { applied, approved, pending };

Consequence consequence(
    const BuddyAction& action, const std::map<QString, bool>& actionConfirmations)
{
    const auto* proposal = std::get_if<RuleProposal>(&action);
    if (!proposal)
        return Consequence::applied;
    return ProposalLogic::needsConfirmation(*proposal, actionConfirmations) ? Consequence::pending
                                                                            : Consequence::approved;
}

QString acknowledgement(Consequence consequence)
{
    switch (consequence) {
    case Consequence::pending:
        return QStringLiteral("registered as a pending proposal — it awaits the user's "
                              "confirmation in the app; do not claim it is active or done");
    case Consequence::approved:
        return QStringLiteral(
            "auto-approved — the user chose \"Allow always\" for this kind of change, so no banner "
            "appears: it applies when this turn completes and the app posts the outcome in chat. "
            "You may say it is done; do NOT ask the user to confirm anything");
    case Consequence::applied:
        return QStringLiteral("noted — applied when this turn completes");
    }
    Q_UNREACHABLE();
}

constexpr QStringView brokenCall =
    u"error: the arguments of this call are not a complete JSON object; perhaps the reply was cut "
    u"off at its length limit. Nothing was done. Make the call again, with shorter arguments.";

constexpr std::array<QStringView, 9> claims { u"proposed", u"confirm it in the app",
    u"confirm in the banner", u"confirm it in settings", u"queued for your confirmation",
    u"waiting for your confirmation", u"pending your confirmation", u"i've queued",
    u"it's queued" };

} // namespace

const QStringView ChatTurnLogic::claimNudge =
    u"App note: your last reply told the user you proposed or queued a change, but no action "
    u"function call (or action block) came through — words alone register nothing, and the user "
    u"is now waiting for a confirmation that will never appear. If you meant to make that change, "
    u"make the actual call now (set_mascot, set_persona, update_settings, propose_reminder, "
    u"propose_calendar_event, or forget_memory). If you were only referring to something already "
    u"done earlier, say that plainly instead.";

const QStringView ChatTurnLogic::emptyReplyNudge =
    u"Your last reply came through empty or as only a control block. Answer the user directly now "
    u"in plain prose — no fences, no JSON, no tool requests.";

const QStringView ChatTurnLogic::screenshotAttached =
    u"The captured screenshot is attached. Answer from what you actually see — never state a guess "
    u"as fact.";

std::vector<MemoryToolCall> ChatTurnLogic::retrievalCalls(const std::vector<LLMToolCall>& calls)
{
    std::vector<MemoryToolCall> result;
    for (const auto& call : calls) {
        if (!call.isBroken && !ActionTools::isAction(call.name))
            result.push_back({ call.name, call.arguments });
    }
    return result;
}

std::vector<LLMMessage> ChatTurnLogic::toolMessages(const std::vector<LLMToolCall>& calls,
    const std::vector<MemoryToolResult>& results,
    const std::map<QString, bool>& actionConfirmations, const Calendar& calendar)
{
    std::vector<LLMMessage> messages;
    auto result = results.begin();
    for (const auto& call : calls) {
        messages.push_back({ .role = LLMMessage::Role::tool, .toolCallID = call.id });
        if (call.isBroken)
            messages.back().content = brokenCall.toString();
        else if (ActionTools::isAction(call.name))
            messages.back().content = actionAcknowledgement(call, actionConfirmations, calendar);
        else if (result != results.end())
            messages.back().content = (result++)->text;
    }
    return messages;
}

QString ChatTurnLogic::toolResultsText(const std::vector<MemoryToolResult>& results, int round)
{
    QStringList sections;
    for (const auto& result : results)
        sections.append(QStringLiteral("### %1\n%2").arg(result.name, result.text));
    auto text = QStringLiteral("Tool results (local, deterministic):\n%1\n\nNow answer the "
                               "user's question using these results plus what you already "
                               "know.")
                    .arg(sections.join(QStringLiteral("\n\n")));
    if (round < maxRounds - 1)
        return text;
    return text
        + QStringLiteral(" That was your last lookup — answer now with what you have; do not "
                         "request more tools.");
}

QString ChatTurnLogic::actionAcknowledgement(const LLMToolCall& toolCall,
    const std::map<QString, bool>& actionConfirmations, const Calendar& calendar)
{
    const auto actions = ActionParser::actions(toolCall, calendar);
    if (actions.empty())
        return QStringLiteral("error: missing or invalid arguments — nothing was registered");
    auto strongest = Consequence::applied;
    for (const auto& action : actions)
        strongest = std::max(strongest, consequence(action, actionConfirmations));
    return acknowledgement(strongest);
}

bool ChatTurnLogic::claimsActionWithoutCalling(const QString& text)
{
    return std::ranges::any_of(
        claims, [&](QStringView claim) { return text.contains(claim, Qt::CaseInsensitive); });
}

std::vector<QString> ChatTurnLogic::outcomeNames(const std::vector<MemoryToolResult>& results)
{
    std::vector<QString> names;
    names.reserve(results.size());
    for (const auto& result : results)
        names.push_back(result.ok ? result.name : result.name + QStringLiteral(" (failed)"));
    return names;
}

} // namespace pobblewig
