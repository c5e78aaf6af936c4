#include "PobblewigDemoModel/DemoTurn.h"

#include "PobblewigDemoModel/FencedCalls.h"
#include "foundation/Text.h"

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

/// What the app says in the user's name in the course of a turn.
bool isOfTheApp(const QString& text)
{
    return isNudge(text) || FencedCalls::results(text)
        || text.startsWith(u"The captured screenshot is attached.");
}

/// Where the newest message stands that a user wrote; the end if there is none.
size_t placeOfQuestion(Messages messages)
{
    for (auto place = messages.size(); place-- > 0;) {
        if (messages[place].role == u"user" && !isOfTheApp(messages[place].text()))
            return place;
    }
    return messages.size();
}

/// An app that knows its own actions names them in its system prompt, whichever the protocol.
bool explainsTools(Messages messages)
{
    return std::ranges::any_of(messages, [](const auto& message) {
        return message.role == u"system" && message.text().contains(u"set_temporary_mode");
    });
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

DemoTurn::Protocol protocolOf(const ChatRequest& request)
{
    if (!request.tools.empty())
        return DemoTurn::Protocol::functions;
    return explainsTools(request.messages) ? DemoTurn::Protocol::blocks : DemoTurn::Protocol::none;
}

} // namespace

DemoTurn DemoTurn::read(const ChatRequest& request)
{
    const Messages messages(request.messages);
    const auto place = placeOfQuestion(messages);
    const auto isAnswer = [](const auto& message) { return message.role == u"assistant"; };
    DemoTurn turn;
    turn.isFirst = std::ranges::none_of(messages.first(place), isAnswer);
    turn.protocol = protocolOf(request);
    for (const auto& tool : request.tools)
        turn.functions.insert(tool.function.name);
    if (place == messages.size())
        return turn;
    const auto& asked = messages[place];
    const auto since = messages.subspan(place + 1);
    turn.question = Text::firstCharacters(asked.text().trimmed(), longestQuestion);
    turn.hasPicture = asked.hasImage();
    turn.results = resultsIn(since);
    turn.hasScreenshot = std::ranges::any_of(since, &ChatRequestMessage::hasImage);
    turn.wasNudged = std::ranges::any_of(since,
        [](const auto& message) { return message.role == u"user" && isNudge(message.text()); });
    return turn;
}

bool DemoTurn::offers(const QString& tool) const
{
    return protocol == Protocol::blocks || functions.contains(tool);
}

} // namespace pobblewig
