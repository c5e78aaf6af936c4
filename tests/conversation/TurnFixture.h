#pragma once

#include "ChatFixture.h"
#include "conversation/ChatTurn.h"
#include "support/RequestParts.h"
#include "support/Variables.h"

namespace pobblewig {

/// A chat whose model calls functions; what it asks to be done is kept.
struct TurnFixture : ChatFixture {
    std::vector<BuddyAction> actions;
    /// What the conversation said when they arrived.
    QString textsAtActions;

    explicit TurnFixture(std::chrono::milliseconds patience = CaptureConsent::usualPatience)
        : ChatFixture(patience)
    {
        chat.onActions = [this](std::vector<BuddyAction> asked) { return take(std::move(asked)); };
    }

private:
    Task<> take(std::vector<BuddyAction> asked)
    {
        textsAtActions = texts();
        std::ranges::move(asked, std::back_inserter(actions));
        co_return;
    }
};

/// With arguments as "name=value name=value".
inline LLMToolCall call(const QString& name, const QString& arguments = {})
{
    static int number = 0;
    QJsonObject json;
    for (const auto& [key, value] : variables(arguments))
        json[key] = value;
    return LLMToolCall(QStringLiteral("call-%1").arg(++number), name,
        QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact)));
}

inline ScriptedProvider::Reply calling(std::vector<LLMToolCall> calls, const QString& text = {})
{
    ScriptedProvider::Reply reply;
    if (!text.isEmpty())
        reply.events.emplace_back(LLMToken { text });
    reply.events.emplace_back(LLMToolCalls { std::move(calls) });
    return reply;
}

inline LLMToolCall reminder(const QString& id)
{
    return call(u"propose_reminder"_s, u"proposalId=%1 title=%1"_s.arg(id));
}

inline QStringList toolNames(const LLMRequest& request)
{
    QStringList names;
    for (const auto& tool : request.tools)
        names.append(tool.name);
    return names;
}

/// What the model read last.
inline QStringList tail(const LLMRequest& request, qsizetype count)
{
    QStringList contents;
    for (const auto& message : request.messages)
        contents.append(withoutContext(message));
    return contents.last(count);
}

} // namespace pobblewig
