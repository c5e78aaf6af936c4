#pragma once

#include "foundation/JSONValue.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace pobblewig {

struct LLMToolDefinition {
    QString name;
    QString description;
    /// A JSON Schema object.
    JSONValue::Object parameters;
};

/// A call as the model wrote it. Arguments that do not parse give an empty dictionary, and the call
/// is broken.
struct LLMToolCall {
    LLMToolCall() = default;
    LLMToolCall(QString id, QString name, QString argumentsJSON,
        std::optional<JSONValue::Object> arguments = std::nullopt,
        std::optional<QString> thoughtSignature = std::nullopt);

    QString id;
    QString name;
    /// The exact text that the model streamed.
    QString argumentsJSON;
    /// The arguments are not a JSON object, as of a call that the length limit cut off.
    bool isBroken = false;
    std::optional<QString> thoughtSignature;
    JSONValue::Object arguments;
};

struct LLMMessage {
    enum class Role { system, user, assistant, tool };

    Role role = Role::user;
    QString content;
    /// Complete JPEG files; sent with user messages only.
    std::vector<QByteArray> images;
    std::optional<std::vector<LLMToolCall>> toolCalls;
    std::optional<QString> toolCallID;
};

} // namespace pobblewig
