#include "wire/LLMMessage.h"

#include <QJsonDocument>

namespace pobblewig {

namespace {

/// Returns nothing for text that is not a JSON object. A blank text means no arguments.
std::optional<JSONValue::Object> parsedArguments(const QString& text)
{
    const auto document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject() && !text.trimmed().isEmpty())
        return std::nullopt;
    return *JSONValue::fromJson(document.object()).object();
}

} // namespace

LLMToolCall::LLMToolCall(QString id, QString name, QString argumentsJSON,
    std::optional<JSONValue::Object> arguments, std::optional<QString> thoughtSignature)
    : id(std::move(id))
    , name(std::move(name))
    , argumentsJSON(std::move(argumentsJSON))
    , thoughtSignature(std::move(thoughtSignature))
{
    auto parsed = parsedArguments(this->argumentsJSON);
    isBroken = !parsed;
    if (arguments)
        this->arguments = *std::move(arguments);
    else if (parsed)
        this->arguments = *std::move(parsed);
}

} // namespace pobblewig
