#include "PobblewigDemoModel/CompletionFormat.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace pobblewig {

namespace {

/// Words with the blanks that follow them, so that joining them gives the same text.
QStringList words(const QString& text)
{
    static const QRegularExpression word(QStringLiteral(R"(\s*\S+\s*|\s+)"));
    QStringList found;
    for (auto matches = word.globalMatch(text); matches.hasNext();)
        found.append(matches.next().captured());
    return found;
}

/// Cuts as servers do, regardless of the structure of the JSON.
QStringList pieces(const QString& arguments)
{
    static const QRegularExpression piece(
        QStringLiteral(".{1,7}"), QRegularExpression::DotMatchesEverythingOption);
    QStringList found;
    for (auto matches = piece.globalMatch(arguments); matches.hasNext();)
        found.append(matches.next().captured());
    return found;
}

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray event(const QByteArray& data)
{
    return "data: " + data + "\n\n";
}

QJsonObject head(const ChatRequest& request, const QString& object, TimePoint created)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(created).time_since_epoch();
    return { { QStringLiteral("id"), QStringLiteral("chatcmpl-demo") },
        { QStringLiteral("object"), object },
        { QStringLiteral("created"), qint64(seconds.count()) },
        { QStringLiteral("model"), request.model } };
}

/// Counts each word as a token.
QJsonObject usage(const ChatRequest& request, const DemoReply& reply)
{
    qint64 prompt = 0;
    for (const auto& message : request.messages)
        prompt += words(message.text()).size();
    qint64 answer = words(reply.text).size();
    for (const auto& call : reply.calls)
        answer += words(call.argumentsText()).size();
    return { { QStringLiteral("prompt_tokens"), prompt },
        { QStringLiteral("completion_tokens"), answer },
        { QStringLiteral("total_tokens"), prompt + answer } };
}

/// Unique within a conversation.
QString callID(const ChatRequest& request, size_t index)
{
    const auto isResult = [](const auto& message) { return message.role == u"tool"; };
    const auto earlier = std::ranges::count_if(request.messages, isResult);
    return QStringLiteral("call_demo_%1").arg(earlier + qint64(index));
}

QJsonObject toolCall(const QString& id, const QString& name, const QString& arguments)
{
    const QJsonObject function { { QStringLiteral("name"), name },
        { QStringLiteral("arguments"), arguments } };
    return { { QStringLiteral("id"), id }, { QStringLiteral("type"), QStringLiteral("function") },
        { QStringLiteral("function"), function } };
}

QString finishReason(const DemoReply& reply)
{
    return reply.calls.empty() ? QStringLiteral("stop") : QStringLiteral("tool_calls");
}

QJsonObject choice(const QString& key, const QJsonObject& content, const QJsonValue& finishReason)
{
    return { { QStringLiteral("index"), 0 }, { key, content },
        { QStringLiteral("finish_reason"), finishReason } };
}

QByteArray chunk(QJsonObject base, const QJsonObject& delta, const QJsonValue& finishReason)
{
    base[QStringLiteral("choices")] =
        QJsonArray { choice(QStringLiteral("delta"), delta, finishReason) };
    return event(compact(base));
}

QJsonObject callDelta(QJsonObject call, size_t index)
{
    call[QStringLiteral("index")] = qint64(index);
    return { { QStringLiteral("tool_calls"), QJsonArray { call } } };
}

/// Writes the name first, then the arguments piece by piece.
void appendCall(std::vector<QByteArray>& written, const QJsonObject& base, const QString& id,
    const DemoToolCall& call, size_t index)
{
    const auto opening = toolCall(id, call.name, {});
    written.push_back(chunk(base, callDelta(opening, index), QJsonValue::Null));
    for (const auto& piece : pieces(call.argumentsText())) {
        const QJsonObject function { { QStringLiteral("arguments"), piece } };
        const QJsonObject more { { QStringLiteral("function"), function } };
        written.push_back(chunk(base, callDelta(more, index), QJsonValue::Null));
    }
}

} // namespace

QByteArray CompletionFormat::completion(
    const ChatRequest& request, const DemoReply& reply, TimePoint created)
{
    QJsonObject message { { QStringLiteral("role"), QStringLiteral("assistant") },
        { QStringLiteral("content"), reply.text } };
    QJsonArray calls;
    for (size_t index = 0; const auto& call : reply.calls)
        calls.append(toolCall(callID(request, index++), call.name, call.argumentsText()));
    if (!calls.isEmpty())
        message[QStringLiteral("tool_calls")] = calls;
    auto object = head(request, QStringLiteral("chat.completion"), created);
    object[QStringLiteral("choices")] =
        QJsonArray { choice(QStringLiteral("message"), message, finishReason(reply)) };
    object[QStringLiteral("usage")] = usage(request, reply);
    return compact(object);
}

std::vector<QByteArray> CompletionFormat::events(
    const ChatRequest& request, const DemoReply& reply, TimePoint created)
{
    const auto base = head(request, QStringLiteral("chat.completion.chunk"), created);
    std::vector<QByteArray> written;
    for (const auto& word : words(reply.text))
        written.push_back(chunk(base, { { QStringLiteral("content"), word } }, QJsonValue::Null));
    for (size_t index = 0; index < reply.calls.size(); ++index)
        appendCall(written, base, callID(request, index), reply.calls[index], index);
    written.push_back(chunk(base, {}, finishReason(reply)));
    if (request.streamOptions.includeUsage) {
        auto last = base;
        last[QStringLiteral("choices")] = QJsonArray();
        last[QStringLiteral("usage")] = usage(request, reply);
        written.push_back(event(compact(last)));
    }
    written.push_back(event("[DONE]"));
    return written;
}

QByteArray CompletionFormat::models()
{
    const QJsonObject model { { QStringLiteral("id"), QStringLiteral("demo model") },
        { QStringLiteral("object"), QStringLiteral("model") } };
    return compact({ { QStringLiteral("object"), QStringLiteral("list") },
        { QStringLiteral("data"), QJsonArray { model } } });
}

QByteArray CompletionFormat::error(const QString& message)
{
    const QJsonObject details { { QStringLiteral("message"), message },
        { QStringLiteral("type"), QStringLiteral("invalid_request_error") } };
    return compact({ { QStringLiteral("error"), details } });
}

} // namespace pobblewig
