#include "PobblewigDemoModel/CompletionFormat.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStringList>

namespace pobblewig {

namespace {

/// Words with the blanks after them: joined they are the text again.
QStringList words(const QString& text)
{
    static const QRegularExpression word(QStringLiteral(R"(\s*\S+\s*|\s+)"));
    QStringList found;
    for (auto matches = word.globalMatch(text); matches.hasNext();)
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

/// The demo model counts a word as a token.
QJsonObject usage(const ChatRequest& request, const DemoReply& reply)
{
    qint64 prompt = 0;
    for (const auto& message : request.messages)
        prompt += words(message.text()).size();
    const qint64 answer = words(reply.text).size();
    return { { QStringLiteral("prompt_tokens"), prompt },
        { QStringLiteral("completion_tokens"), answer },
        { QStringLiteral("total_tokens"), prompt + answer } };
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

} // namespace

QByteArray CompletionFormat::completion(
    const ChatRequest& request, const DemoReply& reply, TimePoint created)
{
    const QJsonObject message { { QStringLiteral("role"), QStringLiteral("assistant") },
        { QStringLiteral("content"), reply.text } };
    auto object = head(request, QStringLiteral("chat.completion"), created);
    object[QStringLiteral("choices")] =
        QJsonArray { choice(QStringLiteral("message"), message, QStringLiteral("stop")) };
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
    written.push_back(chunk(base, {}, QStringLiteral("stop")));
    if (request.streamOptions.includeUsage) {
        auto last = base;
        last[QStringLiteral("choices")] = QJsonArray();
        last[QStringLiteral("usage")] = usage(request, reply);
        written.push_back(event(compact(last)));
    }
    written.push_back(event("[DONE]"));
    return written;
}

QByteArray CompletionFormat::error(const QString& message)
{
    const QJsonObject details { { QStringLiteral("message"), message },
        { QStringLiteral("type"), QStringLiteral("invalid_request_error") } };
    return compact({ { QStringLiteral("error"), details } });
}

} // namespace pobblewig
