#pragma once

#include "foundation/JSONCodec.h"
#include "foundation/JSONValue.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <optional>
#include <vector>

namespace pobblewig {

struct ChatFunction {
    QString name;
    /// A JSON object as text; only in a call.
    QString arguments;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("name", &ChatFunction::name),
            defaulted("arguments", &ChatFunction::arguments) };
    }
};

/// A call that the model made earlier.
struct ChatToolCall {
    QString id;
    ChatFunction function;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { defaulted("id", &ChatToolCall::id),
            required("function", &ChatToolCall::function) };
    }
};

/// A tool that the model may call.
struct ChatTool {
    ChatFunction function;

    static constexpr auto jsonFields()
    {
        return std::tuple { json::required("function", &ChatTool::function) };
    }
};

struct ChatRequestMessage {
    QString role;
    /// A text, an array of parts, or nothing.
    JSONValue content;
    std::vector<ChatToolCall> toolCalls;
    /// The id of the call that a message with the role "tool" answers.
    QString toolCallID;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("role", &ChatRequestMessage::role),
            defaulted("content", &ChatRequestMessage::content),
            defaulted("tool_calls", &ChatRequestMessage::toolCalls),
            defaulted("tool_call_id", &ChatRequestMessage::toolCallID) };
    }

    /// All text parts, joined by line breaks.
    QString text() const;
    bool hasImage() const;
};

struct ChatStreamOptions {
    bool includeUsage = false;

    static constexpr auto jsonFields()
    {
        return std::tuple { json::defaulted("include_usage", &ChatStreamOptions::includeUsage) };
    }
};

struct ChatSchema {
    QString name;
    JSONValue schema;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { defaulted("name", &ChatSchema::name),
            required("schema", &ChatSchema::schema) };
    }
};

struct ChatResponseFormat {
    QString type;
    std::optional<ChatSchema> jsonSchema;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("type", &ChatResponseFormat::type),
            optional("json_schema", &ChatResponseFormat::jsonSchema) };
    }
};

/// The part of a chat completion request that the demo model uses; the rest is ignored.
struct ChatRequest {
    QString model;
    std::vector<ChatRequestMessage> messages;
    std::vector<ChatTool> tools;
    bool stream = false;
    ChatStreamOptions streamOptions;
    std::optional<ChatResponseFormat> responseFormat;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { defaulted("model", &ChatRequest::model),
            required("messages", &ChatRequest::messages), defaulted("tools", &ChatRequest::tools),
            defaulted("stream", &ChatRequest::stream),
            defaulted("stream_options", &ChatRequest::streamOptions),
            optional("response_format", &ChatRequest::responseFormat) };
    }

    /// The error is a sentence for the sender of the request. A request has at least one message.
    static tl::expected<ChatRequest, QString> parse(const QByteArray& body);
};

} // namespace pobblewig
