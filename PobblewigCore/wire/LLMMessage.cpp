#include "wire/LLMMessage.h"

#include <QJsonDocument>

namespace pobblewig {

namespace {

JSONValue::Object parsedArguments(const QString& text)
{
    const auto document = QJsonDocument::fromJson(text.toUtf8());
    const auto value = JSONValue::fromJson(document.object());
    return *value.object();
}

} // namespace

LLMToolCall::LLMToolCall(QString id, QString name, QString argumentsJSON,
    std::optional<JSONValue::Object> arguments, std::optional<QString> thoughtSignature)
    : id(std::move(id))
    , name(std::move(name))
    , argumentsJSON(std::move(argumentsJSON))
    , thoughtSignature(std::move(thoughtSignature))
    , arguments(arguments ? std::move(*arguments) : parsedArguments(this->argumentsJSON))
{
}

} // namespace pobblewig
