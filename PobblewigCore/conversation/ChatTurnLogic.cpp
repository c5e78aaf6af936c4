#include "conversation/ChatTurnLogic.h"

#include "conversation/proposals/ActionTools.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

QString text(const BuddyAction& action, const ActionVerdict& verdict)
{
    using Kind = ActionVerdict::Kind;
    switch (verdict.kind) {
    case Kind::noted: {
        const auto noted = QStringLiteral("noted — applied when this turn completes");
        const auto* temporary = std::get_if<TemporaryMode>(&action);
        return temporary ? QStringLiteral("%1, for %2 minutes").arg(noted).arg(temporary->minutes)
                         : noted;
    }
    case Kind::approved:
        return QStringLiteral(
            "auto-approved — the user chose \"Allow always\" for this kind of change, so no banner "
            "appears: it applies when this turn completes and the app posts the outcome in chat. "
            "You may say it is done; do NOT ask the user to confirm anything");
    case Kind::pending:
        return QStringLiteral("registered as a pending proposal — it awaits the user's "
                              "confirmation in the app; do not claim it is active or done");
    case Kind::waiting:
        return QStringLiteral("already registered — the same proposal still awaits the user's "
                              "confirmation in the app; nothing was added");
    case Kind::done:
        return QStringLiteral("already done — the user has just confirmed this and it is in "
                              "effect; nothing was registered");
    case Kind::dismissed:
        return QStringLiteral("the user has just dismissed this — nothing was registered; propose "
                              "it again only if they ask for it");
    case Kind::idTaken:
        return QStringLiteral("error: another request has this proposalId — nothing was "
                              "registered; call again with a new proposalId");
    case Kind::tooMany:
        return QStringLiteral("refused: too many changes are waiting for the user's answer — "
                              "nothing was registered");
    case Kind::refused:
        return QStringLiteral("refused: %1 — nothing was registered").arg(verdict.reason);
    }
    Q_UNREACHABLE();
}

constexpr QStringView brokenCall =
    u"error: the arguments of this call are not a complete JSON object; perhaps the reply was cut "
    u"off at its length limit. Nothing was done. Make the call again, with shorter arguments.";

QString name(const BuddyAction& action)
{
    const auto* proposal = std::get_if<RuleProposal>(&action);
    return proposal ? proposal->name : QString();
}

constexpr std::array<QStringView, 9> claims { u"proposed", u"confirm it in the app",
    u"confirm in the banner", u"confirm it in settings", u"queued for your confirmation",
    u"waiting for your confirmation", u"pending your confirmation", u"i've queued",
    u"it's queued" };

constexpr std::array<QStringView, 6> nameable { u"set_mascot", u"set_persona", u"update_settings",
    u"propose_reminder", u"propose_calendar_event", u"forget_memory" };

} // namespace

QString ChatTurnLogic::claimNudge(const QStringList& offered)
{
    QStringList names;
    for (const auto& name : nameable) {
        if (offered.contains(name))
            names.append(name.toString());
    }
    if (names.size() > 1)
        names.last().prepend(u"or ");
    return QStringLiteral(
        "App note: your last reply told the user you proposed or queued a change, but no action "
        "function call (or action block) came through — words alone register nothing, and the user "
        "is now waiting for a confirmation that will never appear. If you meant to make that "
        "change, make the actual call now (%1). If you were only referring to something already "
        "done earlier, say that plainly instead.")
        .arg(names.join(QStringLiteral(", ")));
}

const QStringView ChatTurnLogic::blockNudge =
    u"App note: the control block of your last reply could not be read, so nothing was registered "
    u"or looked up. If you meant it, write the whole reply again with one valid block as its very "
    u"end: the opening fence with its tag, one JSON object as described, the closing fence. "
    u"Otherwise answer in plain prose.";

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
    const std::vector<MemoryToolResult>& results, const std::vector<QString>& acknowledgements)
{
    std::vector<LLMMessage> messages;
    auto result = results.begin();
    auto acknowledgement = acknowledgements.begin();
    for (const auto& call : calls) {
        messages.push_back({ .role = LLMMessage::Role::tool, .toolCallID = call.id });
        if (call.isBroken)
            messages.back().content = brokenCall.toString();
        else if (!ActionTools::isAction(call.name) && result != results.end())
            messages.back().content = (result++)->text;
        else if (ActionTools::isAction(call.name) && acknowledgement != acknowledgements.end())
            messages.back().content = *acknowledgement++;
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

QString ChatTurnLogic::acknowledgement(
    const std::vector<BuddyAction>& actions, const std::vector<ActionVerdict>& verdicts)
{
    if (actions.empty())
        return QStringLiteral("error: missing or invalid arguments — nothing was registered");
    QStringList texts;
    QStringList lines;
    for (size_t index = 0; index < actions.size(); ++index) {
        texts.append(text(actions[index], verdicts[index]));
        lines.append(name(actions[index]) + QStringLiteral(": ") + texts.last());
    }
    return texts.count(texts.first()) == texts.size() ? texts.first() : lines.join(u'\n');
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
