#include "PobblewigDemoModel/DemoReplies.h"

#include "PobblewigDemoModel/DemoForgetting.h"
#include "PobblewigDemoModel/DemoInterventions.h"
#include "PobblewigDemoModel/DemoLibrarian.h"
#include "PobblewigDemoModel/DemoLookups.h"
#include "PobblewigDemoModel/DemoMisbehaviour.h"
#include "PobblewigDemoModel/DemoReminders.h"
#include "PobblewigDemoModel/DemoSettings.h"
#include "PobblewigDemoModel/DemoSmallTalk.h"
#include "PobblewigDemoModel/DemoWords.h"
#include "PobblewigDemoModel/FencedCalls.h"
#include "PobblewigDemoModel/SchemaAnswer.h"
#include "PobblewigDemoModel/ToolAnswers.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace pobblewig {

namespace {

using Calls = std::vector<DemoToolCall>;

const QString& introduction()
{
    static const auto text = QStringLiteral(
        "Before anything else: I am the built-in demo model, not a real AI. I answer by a handful "
        "of fixed rules, so that you can see how Pobblewig works before you decide on a model.\n\n"
        "To talk with a real one, put MAIN_MODEL_BASE_URL, MAIN_MODEL_ID and MAIN_MODEL_API_KEY "
        "into the file ~/.config/Pobblewig/environment; it answers from your next message on. A "
        "server on your own computer will do. The README has the details.");
    return text;
}

QString describePicture()
{
    return QStringLiteral("Thank you for the picture. I am sure that it is a good one, but a demo "
                          "model has no eyes. With a vision model I could tell you what I see.");
}

std::optional<DemoPlan> planBy(const DemoRules& rules, const QString& text, const QDateTime& now)
{
    for (const auto& rule : rules) {
        if (const auto match = rule.pattern.match(text); match.hasMatch())
            return rule.plan({ match, now });
    }
    return std::nullopt;
}

DemoPlan planFor(const DemoTurn& turn, const QDateTime& now)
{
    if (turn.hasPicture)
        return { describePicture() };
    const auto wish = DemoWords::withoutCourtesies(turn.question);
    for (const auto* rules : { &DemoMisbehaviour::rules(), &DemoForgetting::rules(),
             &DemoSettings::rules(), &DemoReminders::rules(), &DemoLookups::rules() }) {
        if (auto plan = planBy(*rules, wish, now))
            return *std::move(plan);
    }
    if (!turn.results.empty())
        return {};
    return planBy(DemoSmallTalk::rules(), turn.question, now).value_or(DemoPlan());
}

Calls openCalls(const DemoPlan& plan, const DemoResults& results)
{
    auto calls = plan.calls;
    std::erase_if(calls, [&](const auto& call) { return ToolAnswers::has(results, call.name); });
    return calls;
}

/// The plan after these results.
DemoPlan reached(DemoPlan plan, const DemoResults& results)
{
    while (plan.next && openCalls(plan, results).empty()) {
        auto following = plan.next(results);
        plan = std::move(following);
    }
    return plan;
}

/// Calls that load the plan's tools, unless they are loaded or loading was tried.
Calls loading(const DemoPlan& plan, const Calls& open, const DemoTurn& turn)
{
    const auto describe = QStringLiteral("describe_tool");
    auto names = plan.nextTools;
    for (const auto& call : open)
        names.append(call.name);
    Calls loads;
    for (const auto& name : names) {
        const DemoToolCall load { describe, { { QStringLiteral("name"), name } } };
        const auto isTried =
            std::ranges::find(turn.results, load.argumentsText(), &DemoToolResult::argumentsText)
            != turn.results.end();
        if (turn.offers(describe) && !turn.offers(name) && !isTried)
            loads.push_back(load);
    }
    return loads;
}

/// The calls of a plan are either all changes or all look-ups.
QString fenced(const Calls& calls, const DemoTurn& turn)
{
    using enum FencedCalls::Kind;
    const auto areChanges = turn.changes.contains(calls.front().name);
    return FencedCalls::written(calls, areChanges ? changes : lookUps);
}

DemoReply calling(const DemoPlan& plan, const Calls& open, const DemoTurn& turn)
{
    const auto inBlocks = turn.protocol == DemoTurn::Protocol::blocks;
    auto calls = inBlocks ? Calls() : loading(plan, open, turn);
    std::ranges::copy_if(
        open, std::back_inserter(calls), [&](const auto& call) { return turn.offers(call.name); });
    if (calls.empty())
        return { QStringLiteral("For that I would call %1, which I am not offered at present.")
                     .arg(open.front().name) };
    if (inBlocks)
        return { plan.sentence + QStringLiteral("\n\n") + fenced(calls, turn) };
    return { plan.sentence, calls };
}

/// Describes the results of the plan's last calls, or of all calls if it planned none.
QString spokenResults(const DemoPlan& plan, const DemoTurn& turn)
{
    auto results = turn.results;
    std::erase_if(results, [&](const auto& result) {
        return !plan.calls.empty()
            && std::ranges::find(plan.calls, result.name, &DemoToolCall::name) == plan.calls.end();
    });
    return ToolAnswers::spoken(results, plan.sentence, turn.hasScreenshot);
}

DemoReply answer(const DemoTurn& turn, const QDateTime& now)
{
    const auto plan = reached(planFor(turn, now), turn.results);
    if (turn.wasNudged && !plan.afterNudge.isEmpty())
        return { plan.afterNudge };
    if (const auto open = openCalls(plan, turn.results); !open.empty())
        return calling(plan, open, turn);
    if (plan.calls.empty() && (!plan.sentence.isEmpty() || turn.results.empty()))
        return { plan.sentence };
    return { spokenResults(plan, turn) };
}

/// Whether the user will read this, rather than the model's text between two rounds of tools.
bool isFinal(const DemoReply& reply)
{
    return reply.calls.empty() && !reply.text.contains(u"```buddy-tools");
}

JSONValue emptiest(const ChatResponseFormat& format)
{
    return format.jsonSchema ? SchemaAnswer::emptiest(format.jsonSchema->schema)
                             : JSONValue(JSONValue::Object());
}

/// Escapes braces in strings, so that the end of an object can be found without parsing strings.
QString withEscapedBraces(const QByteArray& json)
{
    QByteArray escaped;
    bool isInString = false;
    for (qsizetype at = 0; at < json.size(); ++at) {
        if (json[at] == '\\')
            escaped += json[at++];
        else if (json[at] == '"')
            isInString = !isInString;
        if (isInString && (json[at] == '{' || json[at] == '}'))
            escaped += json[at] == '{' ? "\\u007b" : "\\u007d";
        else
            escaped += json[at];
    }
    return QString::fromUtf8(escaped);
}

QString formatted(const ChatRequest& request, const QDateTime& now)
{
    const auto answer = DemoLibrarian::answer(request, now);
    const auto object = (answer ? *answer : emptiest(*request.responseFormat)).toJson().toObject();
    return withEscapedBraces(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

DemoReply DemoReplies::reply(const ChatRequest& request, const QDateTime& now)
{
    if (request.responseFormat && request.responseFormat->type != u"text")
        return { formatted(request, now) };
    if (auto message = DemoInterventions::message(request))
        return { *std::move(message) };
    const auto turn = DemoTurn::read(request);
    auto reply = answer(turn, now);
    if (turn.isFirst && isFinal(reply) && !reply.text.isEmpty())
        reply.text = introduction() + QStringLiteral("\n\n") + reply.text;
    return reply;
}

} // namespace pobblewig
