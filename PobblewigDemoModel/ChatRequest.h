#pragma once

#include "foundation/JSONCodec.h"
#include "foundation/JSONValue.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <optional>
#include <vector>

namespace pobblewig {

struct ChatRequestMessage {
    QString role;
    /// A text, or an array of parts, or nothing.
    JSONValue content;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("role", &ChatRequestMessage::role),
            defaulted("content", &ChatRequestMessage::content) };
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
    JSONValue schema;

    static constexpr auto jsonFields()
    {
        return std::tuple { json::required("schema", &ChatSchema::schema) };
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

/// What the demo model reads of a request for a chat completion; it has no use for the rest.
struct ChatRequest {
    QString model;
    std::vector<ChatRequestMessage> messages;
    bool stream = false;
    ChatStreamOptions streamOptions;
    std::optional<ChatResponseFormat> responseFormat;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { defaulted("model", &ChatRequest::model),
            required("messages", &ChatRequest::messages), defaulted("stream", &ChatRequest::stream),
            defaulted("stream_options", &ChatRequest::streamOptions),
            optional("response_format", &ChatRequest::responseFormat) };
    }

    /// The error is a sentence for whoever sent the request. There is at least one message.
    static tl::expected<ChatRequest, QString> parse(const QByteArray& body);
};

} // namespace pobblewig
