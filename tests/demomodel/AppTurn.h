#pragma once

#include "PobblewigDemoModel/CompletionFormat.h"
#include "conversation/ActionParser.h"
#include "conversation/BuddyTools.h"
#include "support/Awaited.h"
#include "wire/OpenAICompatibleProvider.h"

#include <QTimeZone>

namespace pobblewig {

/// A Saturday in winter, in a zone an hour ahead of UTC.
inline QDateTime demoNow()
{
    return { { 2026, 11, 21 }, { 14, 7, 30 }, QTimeZone("Europe/Berlin") };
}

/// The demo model, without a network between.
class DemoClient : public HTTPClient {
public:
    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest) override
    {
        co_return tl::unexpected(TransportError());
    }

    HTTPStream stream(HTTPRequest request) override
    {
        HTTPStream stream;
        const auto parsed = ChatRequest::parse(request.body);
        stream.sink().push(HTTPHead { parsed ? 200 : 400 });
        if (parsed) {
            const auto reply = DemoReplies::reply(*parsed, demoNow());
            for (const auto& event : CompletionFormat::events(*parsed, reply, TimePoint()))
                stream.sink().push(event.trimmed());
        }
        stream.sink().finish();
        return stream;
    }
};

struct Heard {
    QString text;
    std::vector<LLMToolCall> calls;
};

inline Task<Heard> heard(std::shared_ptr<LLMStream> stream)
{
    Heard all;
    while (const auto event = co_await stream->next()) {
        if (const auto* token = std::get_if<LLMToken>(&*event))
            all.text += token->text;
        if (const auto* calls = std::get_if<LLMToolCalls>(&*event))
            all.calls = calls->calls;
    }
    co_return all;
}

/// What the app would answer to a call.
inline QString resultOf(const QString& tool, const JSONValue::Object& arguments)
{
    if (tool == u"describe_tool")
        return arguments.at(QStringLiteral("name")).displayString()
            + QStringLiteral(" is now available — call it in your next step. It does: things");
    if (tool == u"memory_find_notes")
        return QStringLiteral(
            "- [id:1a2b3c4d] (preferences) Likes tea\n- [id:00000000] (misc) Tea");
    if (tool == u"memory_search_reference")
        return QStringLiteral("- [id:5e6f7a8b] [Deadlines] Essay: due soon [key=value]");
    if (tool == u"memory_list_period_summaries")
        return QStringLiteral("- [id:11111111] day A → B: x\n- [id:22222222] week A → B: y");
    if (tool == u"memory_add_observation")
        return QStringLiteral("recorded observation 1a2b3c4d");
    if (tool == u"memory_propose_pattern")
        return QStringLiteral("not recorded: patterns need evidence");
    if (tool == u"screen_capture")
        return QStringLiteral("captured: Firefox — the image is attached to this message");
    if (tool == u"set_temporary_mode")
        return QStringLiteral("noted — applied when this turn completes");
    if (BuddyTools::isActionTool(tool))
        return QStringLiteral("registered as a pending proposal — it awaits the user");
    if (tool == u"apps_read_file")
        return QStringLiteral("error: refused");
    return QStringLiteral("Result of ") + tool;
}

inline std::vector<LLMToolDefinition> toolsOnOffer(const std::vector<LLMToolCall>& made)
{
    auto tools = BuddyTools::retrievalTools(
        BuddyTools::ScreenCapture::offered, BuddyTools::AccountabilityTools::offered);
    for (const auto& call : made) {
        const auto name = call.arguments.find(QStringLiteral("name"));
        if (call.name == u"describe_tool" && name != call.arguments.end())
            tools.push_back(*BuddyTools::deferredTool(name->second.displayString()));
    }
    const auto& actions = BuddyTools::actionTools();
    tools.insert(tools.end(), actions.begin(), actions.end());
    return tools;
}

inline LLMMessage pictureMessage(const QString& text)
{
    return { .role = LLMMessage::Role::user, .content = text, .imageJPEG = QByteArray("JPEG") };
}

/// One turn of the app with the demo model, as far as tools are concerned.
class AppTurn {
public:
    explicit AppTurn(const QString& sentence)
    {
        m_request.messages = {
            { .role = LLMMessage::Role::system,
                .content = QStringLiteral("Call set_temporary_mode, …") },
            { .role = LLMMessage::Role::user, .content = QStringLiteral("Hi") },
            { .role = LLMMessage::Role::assistant, .content = QStringLiteral("Hello") },
            { .role = LLMMessage::Role::user, .content = sentence },
        };
    }

    void runWithFunctions()
    {
        for (rounds = 0; rounds < 4; ++rounds) {
            m_request.tools = toolsOnOffer(calls);
            const auto reply = ask();
            answer = reply.text;
            if (reply.calls.empty())
                return;
            calls.insert(calls.end(), reply.calls.begin(), reply.calls.end());
            addResults(reply);
        }
    }

    void runWithBlocks()
    {
        for (rounds = 0; rounds < 4; ++rounds) {
            const auto reply = ask();
            const auto wanted = ActionParser::parseToolCalls(reply.text);
            answer = ActionParser::parse(reply.text, {}).displayText;
            actions = ActionParser::parse(reply.text, {}).actions;
            for (const auto& call : wanted.calls)
                calls.emplace_back(QString(), call.name, QString(), call.args);
            if (wanted.calls.empty())
                return;
            addResults(reply, wanted);
        }
    }

    void say(LLMMessage::Role role, const QString& text)
    {
        m_request.messages.push_back({ .role = role, .content = text });
    }

    void offer(std::vector<LLMToolDefinition> tools) { m_request.tools = std::move(tools); }
    void replaceSystem(const QString& text) { m_request.messages.front().content = text; }
    void forgetGreeting()
    {
        m_request.messages.erase(m_request.messages.begin() + 1, m_request.messages.begin() + 3);
    }

    Heard ask()
    {
        LLMConfiguration configuration;
        configuration.modelID = configuration.apiKey = QStringLiteral("demo");
        OpenAICompatibleProvider provider(configuration, m_client);
        return awaited(heard(std::make_shared<LLMStream>(provider.streamChat(m_request))));
    }

    int rounds = 0;
    std::vector<LLMToolCall> calls;
    std::vector<BuddyAction> actions;
    QString answer;

private:
    void addResults(const Heard& reply)
    {
        m_request.messages.push_back({ .role = LLMMessage::Role::assistant,
            .content = reply.text,
            .toolCalls = reply.calls });
        for (const auto& call : reply.calls) {
            m_request.messages.push_back({ .role = LLMMessage::Role::tool,
                .content = resultOf(call.name, call.arguments),
                .toolCallID = call.id });
        }
        if (reply.calls.front().name == u"screen_capture")
            m_request.messages.push_back(
                pictureMessage(QStringLiteral("The captured screenshot is attached. Answer…")));
    }

    void addResults(const Heard&, const ActionParser::ToolRequest& wanted)
    {
        say(LLMMessage::Role::assistant, *wanted.displayText);
        QStringList results;
        for (const auto& call : wanted.calls)
            results.append(
                QStringLiteral("### ") + call.name + u'\n' + resultOf(call.name, call.args));
        auto message = pictureMessage(QStringLiteral("Tool results (local, deterministic):\n")
            + results.join(QStringLiteral("\n\n"))
            + QStringLiteral("\n\nNow answer the user's question using these results plus what you "
                             "already know."));
        if (wanted.calls.front().name != u"screen_capture")
            message.imageJPEG.reset();
        m_request.messages.push_back(message);
    }

    DemoClient m_client;
    LLMRequest m_request;
};

} // namespace pobblewig
