#include "PobblewigDemoModel/DemoTurn.h"

#include "PobblewigDemoModel/FencedCalls.h"
#include "foundation/Text.h"

#include <QRegularExpression>

#include <algorithm>
#include <map>
#include <span>

namespace pobblewig {

namespace {

constexpr qsizetype longestQuestion = 2000;

using Messages = std::span<const ChatRequestMessage>;

bool isNudge(const QString& text)
{
    return text.startsWith(u"App note: ") || text.startsWith(u"Your last reply came through empty");
}

/// Whether the app itself wrote this user message in the course of a turn.
bool isOfTheApp(const QString& text)
{
    return isNudge(text) || FencedCalls::results(text)
        || text.startsWith(u"The captured screenshot is attached.");
}

/// The text without the app's context in front of it.
QString withoutContext(const QString& text)
{
    constexpr QStringView end = u"\n\nThe user's message:\n";
    if (!text.startsWith(u"App context, not written by the user:"))
        return text;
    const auto place = text.indexOf(end);
    return place < 0 ? text : text.sliced(place + end.size());
}

/// The index of the latest message that the user wrote, or the number of messages if there is none.
size_t placeOfQuestion(Messages messages)
{
    for (auto place = messages.size(); place-- > 0;) {
        if (messages[place].role == u"user" && !isOfTheApp(messages[place].text()))
            return place;
    }
    return messages.size();
}

/// The names in all matches of `list`, separated by ", " within a match.
std::set<QString> namesIn(const QString& text, const QRegularExpression& list)
{
    std::set<QString> names;
    for (auto matches = list.globalMatch(text); matches.hasNext();) {
        const auto found = matches.next().captured(1).split(QStringLiteral(", "));
        names.insert(found.begin(), found.end());
    }
    return names;
}

/// The actions that the app's system prompt explains: "- set_mascot: …" if they are functions, else
/// a sample of each, {"type":"set_mascot",…}.
std::set<QString> changesIn(Messages messages)
{
    static const QRegularExpression functions(
        QStringLiteral("^- ([a-z]+_[a-z_]+(?:, [a-z]+_[a-z_]+)*): "),
        QRegularExpression::MultilineOption);
    static const QRegularExpression samples(
        QStringLiteral("^\\{\"type\":\"([a-z_]+)\""), QRegularExpression::MultilineOption);
    std::set<QString> names;
    for (const auto& message : messages) {
        if (message.role != u"system")
            continue;
        names.merge(namesIn(message.text(), functions));
        names.merge(namesIn(message.text(), samples));
    }
    return names;
}

DemoResults resultsIn(Messages messages)
{
    DemoResults found;
    std::map<QString, ChatFunction> called;
    for (const auto& message : messages) {
        for (const auto& call : message.toolCalls)
            called[call.id] = call.function;
        if (message.role == u"tool") {
            const auto& function = called[message.toolCallID];
            found.push_back({ function.name, function.arguments, message.text() });
        } else if (message.role == u"user") {
            for (const auto& result :
                FencedCalls::results(message.text()).value_or(std::vector<FencedCalls::Result>()))
                found.push_back({ result.name, {}, result.text });
        }
    }
    return found;
}

} // namespace

DemoTurn DemoTurn::read(const ChatRequest& request)
{
    const Messages messages(request.messages);
    const auto place = placeOfQuestion(messages);
    const auto isAnswer = [](const auto& message) { return message.role == u"assistant"; };
    DemoTurn turn;
    turn.isFirst = std::ranges::none_of(messages.first(place), isAnswer);
    turn.changes = changesIn(messages);
    if (!request.tools.empty())
        turn.protocol = Protocol::functions;
    else if (!turn.changes.empty())
        turn.protocol = Protocol::blocks;
    for (const auto& tool : request.tools)
        turn.functions.insert(tool.function.name);
    if (place == messages.size())
        return turn;
    const auto& asked = messages[place];
    const auto since = messages.subspan(place + 1);
    turn.question = Text::firstCharacters(withoutContext(asked.text()).trimmed(), longestQuestion);
    turn.hasPicture = asked.hasImage();
    turn.results = resultsIn(since);
    turn.hasScreenshot = std::ranges::any_of(since, &ChatRequestMessage::hasImage);
    turn.wasNudged = std::ranges::any_of(since,
        [](const auto& message) { return message.role == u"user" && isNudge(message.text()); });
    return turn;
}

bool DemoTurn::offers(const QString& tool) const
{
    if (protocol != Protocol::blocks)
        return functions.contains(tool);
    // The look-ups are not always listed.
    return changes.contains(tool) || !tool.startsWith(u"propose_");
}

} // namespace pobblewig
