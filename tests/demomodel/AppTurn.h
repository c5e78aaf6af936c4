#pragma once

#include "PobblewigDemoModel/DemoReplies.h"
#include "conversation/ActionParser.h"
#include "conversation/BuddyTools.h"
#include "conversation/proposals/ActionTools.h"
#include "prompts/ActionInstructions.h"
#include "prompts/MainAssistantPrompt.h"
#include "prompts/ToolInstructions.h"
#include "support/TableRow.h"
#include "support/ToolWorld.h"
#include "wire/ChatCompletionsLogic.h"

#include <QTimeZone>

namespace pobblewig {

/// A Saturday in winter, in a zone an hour ahead of UTC.
inline QDateTime demoNow()
{
    return { { 2026, 11, 21 }, { 14, 7, 30 }, QTimeZone("Europe/Berlin") };
}

struct Heard {
    QString text;
    std::vector<LLMToolCall> calls = {};
};

/// What the app would answer to a call.
inline QString resultOf(const QString& tool, const JSONValue::Object& arguments)
{
    static const std::map<QString, QString> results {
        { u"apps_read_file"_s, u"error: refused"_s },
        { u"memory_add_observation"_s, u"recorded observation 1a2b3c4d"_s },
        { u"memory_find_notes"_s,
            u"- [id:1a2b3c4d] (preferences) Likes tea\n- [id:00000000] (misc) Tea"_s },
        { u"memory_list_period_summaries"_s,
            u"- [id:11111111] day A → B: x\n- [id:22222222] week A → B: y"_s },
        { u"memory_propose_pattern"_s, u"not recorded: patterns need evidence"_s },
        { u"memory_search_reference"_s,
            u"- [id:5e6f7a8b] [Deadlines] Essay: due soon [key=value]"_s },
        { u"screen_capture"_s, u"captured: Firefox — the image is attached to this message"_s },
        { u"set_temporary_mode"_s, u"noted — applied when this turn completes"_s },
    };
    if (tool == u"describe_tool")
        return arguments.at(u"name"_s).displayString()
            + u" is now available — call it in your next step. It does: things"_s;
    if (const auto found = results.find(tool); found != results.end())
        return found->second;
    return ActionTools::isAction(tool) ? u"registered as a pending proposal — it awaits the user"_s
                                       : u"Result of "_s + tool;
}

inline const BuddyTools& buddyTools()
{
    static ToolWorld world;
    static const BuddyTools tools(world.everyTool(), PlatformWording::linuxDesktop);
    return tools;
}

inline std::vector<LLMToolDefinition> toolsOnOffer(const std::vector<LLMToolCall>& made)
{
    using enum BuddyTools::Offered;
    std::set<QString> loaded;
    for (const auto& call : made) {
        const auto name = call.arguments.find(u"name"_s);
        if (call.name == u"describe_tool" && name != call.arguments.end())
            loaded.insert(name->second.displayString());
    }
    return buddyTools().offered({ .retrieval = yes, .screenCapture = yes, .expanded = loaded });
}

/// One turn of the app with the demo model, as far as tools are concerned.
class AppTurn {
    using Role = LLMMessage::Role;

public:
    explicit AppTurn(const QString& sentence)
    {
        say(Role::system, Prompts::nativeActionInstructions(buddyTools().lines()));
        say(Role::user, u"Hi"_s);
        say(Role::assistant, u"Hello"_s);
        say(Role::user, Prompts::appContext({}) + sentence);
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
        const auto& lines = buddyTools().lines();
        replaceSystem(
            Prompts::toolInstructions(lines.lookups) + Prompts::actionInstructions(lines));
        for (rounds = 0; rounds < 4; ++rounds) {
            const auto reply = ask().text;
            const auto wanted = ActionParser::parseToolCalls(reply);
            answer = ActionParser::parse(reply, {}).displayText;
            actions = ActionParser::parse(reply, {}).actions;
            if (wanted.calls.empty())
                return;
            say(Role::assistant, *wanted.displayText);
            addResults(wanted);
        }
    }

    void say(Role role, const QString& text)
    {
        m_request.messages.push_back({ .role = role, .content = text });
    }
    void offer(std::vector<LLMToolDefinition> tools) { m_request.tools = std::move(tools); }
    void replaceSystem(const QString& text) { m_request.messages.front().content = text; }
    void forgetGreeting()
    {
        m_request.messages.erase(m_request.messages.begin() + 1, m_request.messages.begin() + 3);
    }

    /// Without a network between.
    Heard ask() const
    {
        const auto payload = ChatCompletionsLogic::buildPayload(u"demo"_s, m_request, true);
        const auto request = ChatRequest::parse(QJsonDocument(payload).toJson()).value();
        const auto reply = DemoReplies::reply(request, demoNow());
        Heard heard { reply.text };
        for (const auto& call : reply.calls)
            heard.calls.emplace_back(call.name, call.name, call.argumentsText());
        return heard;
    }

    int rounds = 0;
    std::vector<LLMToolCall> calls;
    std::vector<BuddyAction> actions;
    QString answer;

private:
    void addResults(const Heard& reply)
    {
        say(Role::assistant, reply.text);
        m_request.messages.back().toolCalls = reply.calls;
        for (const auto& call : reply.calls) {
            say(Role::tool, resultOf(call.name, call.arguments));
            m_request.messages.back().toolCallID = call.id;
        }
        if (reply.calls.front().name == u"screen_capture") {
            say(Role::user, u"The captured screenshot is attached. Answer…"_s);
            m_request.messages.back().images = { QByteArray("JPEG") };
        }
    }

    void addResults(const ActionParser::ToolRequest& wanted)
    {
        QStringList results;
        for (const auto& call : wanted.calls) {
            calls.emplace_back(QString(), call.name, QString(), call.args);
            results.append(u"### "_s + call.name + u'\n' + resultOf(call.name, call.args));
        }
        say(Role::user,
            u"Tool results (local, deterministic):\n"_s + results.join(u"\n\n")
                + u"\n\nNow answer the user's question using these results plus what you already "
                  "know."_s);
        if (wanted.calls.front().name == u"screen_capture")
            m_request.messages.back().images = { QByteArray("JPEG") };
    }

    LLMRequest m_request;
};

} // namespace pobblewig
