#include "PobblewigDemoModel/ChatRequest.h"

#include <QJsonDocument>
#include <QStringList>

namespace pobblewig {

namespace {

/// The parts of one type, such as "image_url", in content that is an array.
std::vector<JSONValue::Object> partsOfType(const JSONValue& content, const QString& type)
{
    std::vector<JSONValue::Object> found;
    if (!content.array())
        return found;
    for (const auto& part : *content.array()) {
        if (!part.object())
            continue;
        const auto entry = part.object()->find(QStringLiteral("type"));
        if (entry != part.object()->end() && entry->second == JSONValue(type))
            found.push_back(*part.object());
    }
    return found;
}

} // namespace

QString ChatRequestMessage::text() const
{
    if (content.string())
        return *content.string();
    QStringList texts;
    for (auto& part : partsOfType(content, QStringLiteral("text")))
        texts.append(part[QStringLiteral("text")].displayString());
    return texts.join(u'\n');
}

bool ChatRequestMessage::hasImage() const
{
    return !partsOfType(content, QStringLiteral("image_url")).empty();
}

tl::expected<ChatRequest, QString> ChatRequest::parse(const QByteArray& body)
{
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError)
        return tl::unexpected(QStringLiteral("not JSON: ") + error.errorString());
    const QJsonValue value =
        document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    auto request = json::decode<ChatRequest>(value);
    if (!request)
        return tl::unexpected(request.error().description());
    if (request->messages.empty())
        return tl::unexpected(QStringLiteral("$.messages: expected at least one message"));
    return *std::move(request);
}

} // namespace pobblewig
