#include "wire/ChatCompletionsLogic.h"

#include "foundation/EnumNames.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace pobblewig {

namespace {

using namespace Qt::StringLiterals;
using Role = LLMMessage::Role;

constexpr qsizetype largestModelList = 1024 * 1024;
constexpr qsizetype longestModelName = 200;
constexpr size_t mostModels = 200;

QString name(Role role)
{
    const auto spelled = EnumNames::name(role);
    return QString::fromLatin1(spelled.data(), qsizetype(spelled.size()));
}

QJsonObject encodedToolResult(const LLMMessage& message)
{
    return {
        { u"role"_s, name(Role::tool) },
        { u"tool_call_id"_s, message.toolCallID.value_or(QString()) },
        { u"content"_s, message.content },
    };
}

QJsonObject encodedImageMessage(const LLMMessage& message)
{
    const QJsonObject text { { u"type"_s, u"text"_s }, { u"text"_s, message.content } };
    QJsonArray content { text };
    for (const auto& image : message.images) {
        const auto url = QString::fromLatin1("data:image/jpeg;base64," + image.toBase64());
        content.append(QJsonObject {
            { u"type"_s, u"image_url"_s }, { u"image_url"_s, QJsonObject { { u"url"_s, url } } } });
    }
    return { { u"role"_s, name(Role::user) }, { u"content"_s, content } };
}

QJsonObject encodedToolCall(const LLMToolCall& call)
{
    const auto isSendable = !call.isBroken && !call.argumentsJSON.trimmed().isEmpty();
    const auto arguments = isSendable ? call.argumentsJSON : QStringLiteral("{}");
    QJsonObject object {
        { u"id"_s, call.id },
        { u"type"_s, u"function"_s },
        { u"function"_s, QJsonObject { { u"name"_s, call.name }, { u"arguments"_s, arguments } } },
    };
    if (call.thoughtSignature && !call.thoughtSignature->isEmpty()) {
        const QJsonObject google { { u"thought_signature"_s, *call.thoughtSignature } };
        object.insert(u"extra_content"_s, QJsonObject { { u"google"_s, google } });
    }
    return object;
}

QJsonObject encodedTool(const LLMToolDefinition& tool)
{
    const QJsonObject function {
        { u"name"_s, tool.name },
        { u"description"_s, tool.description },
        { u"parameters"_s, JSONValue(tool.parameters).toJson() },
    };
    return { { u"type"_s, u"function"_s }, { u"function"_s, function } };
}

QJsonObject encodedFormat(const LLMResponseFormat& format)
{
    if (format.kind == LLMResponseFormat::Kind::jsonObject)
        return { { u"type"_s, u"json_object"_s } };
    const QJsonObject schema {
        { u"name"_s, format.name },
        { u"strict"_s, true },
        { u"schema"_s, JSONValue(format.schema).toJson() },
    };
    return { { u"type"_s, u"json_schema"_s }, { u"json_schema"_s, schema } };
}

template <typename Element>
QJsonArray encodedAll(const std::vector<Element>& elements, QJsonObject (*encoded)(const Element&))
{
    QJsonArray array;
    for (const auto& element : elements)
        array.append(encoded(element));
    return array;
}

QByteArray bearerToken(const LLMConfiguration& configuration)
{
    const auto session = configuration.sessionToken.value_or(QString());
    const auto usesSession = configuration.usesCloudAuth && !session.isEmpty();
    return (usesSession ? session : configuration.apiKey).toUtf8();
}

QUrl appended(QUrl url, const QString& path)
{
    auto base = url.path();
    while (base.endsWith(u'/'))
        base.chop(1);
    url.setPath(base + u'/' + path);
    return url;
}

} // namespace

HTTPRequest ChatCompletionsLogic::applyAuth(
    HTTPRequest request, const LLMConfiguration& configuration)
{
    request.headers.push_back({ "Authorization", "Bearer " + bearerToken(configuration) });
    if (configuration.usesCloudAuth && configuration.lane)
        request.headers.push_back({ "X-Skrit-Lane", configuration.lane->toUtf8() });
    return request;
}

QJsonObject ChatCompletionsLogic::encodeMessage(const LLMMessage& message)
{
    if (message.role == Role::tool)
        return encodedToolResult(message);
    if (message.role == Role::user && !message.images.empty())
        return encodedImageMessage(message);
    const auto hasCalls = message.toolCalls && !message.toolCalls->empty();
    QJsonObject object { { u"role"_s, name(message.role) } };
    if (!message.content.isEmpty() || !hasCalls)
        object.insert(u"content"_s, message.content);
    if (hasCalls)
        object.insert(u"tool_calls"_s, encodedAll(*message.toolCalls, encodedToolCall));
    return object;
}

QJsonObject ChatCompletionsLogic::buildPayload(
    const QString& modelID, const LLMRequest& request, bool includeStreamUsage)
{
    QJsonObject payload {
        { u"model"_s, modelID },
        { u"messages"_s, encodedAll(request.messages, encodeMessage) },
        { u"max_tokens"_s, request.maxTokens },
        { u"temperature"_s, request.temperature },
        { u"stream"_s, true },
    };
    if (includeStreamUsage)
        payload.insert(u"stream_options"_s, QJsonObject { { u"include_usage"_s, true } });
    if (request.responseFormat.kind != LLMResponseFormat::Kind::text)
        payload.insert(u"response_format"_s, encodedFormat(request.responseFormat));
    if (!request.tools.empty()) {
        payload.insert(u"tools"_s, encodedAll(request.tools, encodedTool));
        payload.insert(u"tool_choice"_s, u"auto"_s);
    }
    return payload;
}

HTTPRequest ChatCompletionsLogic::modelsRequest(const LLMConfiguration& configuration)
{
    HTTPRequest request;
    request.url = appended(configuration.baseURL, u"models"_s);
    request.timeout = std::chrono::seconds(5);
    request.longest = std::chrono::seconds(8);
    return applyAuth(std::move(request), configuration);
}

std::vector<QString> ChatCompletionsLogic::modelNames(const QByteArray& body)
{
    std::vector<QString> names;
    if (body.size() > largestModelList)
        return names;
    const auto list = QJsonDocument::fromJson(body).object().value(u"data"_s).toArray();
    for (const auto& entry : list) {
        auto name = entry.toObject().value(u"id"_s).toString();
        if (!name.trimmed().isEmpty() && name.size() <= longestModelName
            && names.size() < mostModels)
            names.push_back(std::move(name));
    }
    return names;
}

HTTPRequest ChatCompletionsLogic::httpRequest(const LLMConfiguration& configuration)
{
    HTTPRequest request;
    request.method = "POST";
    request.url = appended(configuration.baseURL, configuration.completionsPath);
    request.headers.push_back({ "Content-Type", "application/json" });
    return applyAuth(std::move(request), configuration);
}

} // namespace pobblewig
