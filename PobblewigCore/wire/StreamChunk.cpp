#include "wire/StreamChunk.h"

#include <simdjson.h>

#include <limits>

namespace pobblewig {

namespace {

using Object = simdjson::dom::object;
using Element = simdjson::dom::element;

/// Reads the fields of a chunk and records whether any value had the wrong type.
class ChunkReader {
public:
    bool hasFailed() const { return m_hasFailed; }

    StreamChunk chunk(Object object)
    {
        return {
            .choices = records(object, "choices", &ChunkReader::choice),
            .usage = record(object, "usage", &ChunkReader::usage),
            .error = error(object),
        };
    }

private:
    StreamChunk::Usage usage(Object object)
    {
        return { number(object, "prompt_tokens"), number(object, "completion_tokens") };
    }

    StreamChunk::Choice choice(Object object)
    {
        const auto reason = words(object, "finish_reason");
        return { record(object, "delta", &ChunkReader::delta),
            reason == "length" || reason == "max_tokens" };
    }

    // No two servers form it alike, so nothing about it is a wrong type.
    static std::optional<StreamChunk::Error> error(Object object)
    {
        if (const auto message = words(object, "error"); !message.empty())
            return StreamChunk::Error { {}, qtText(message) };
        Object details;
        if (object.at_key("error").get(details) != simdjson::SUCCESS || details.size() == 0)
            return std::nullopt;
        const auto message = words(details, "message");
        return StreamChunk::Error {
            .status = status(details),
            .message = message.empty() ? QString::fromStdString(simdjson::minify(details))
                                       : qtText(message),
        };
    }

    static std::optional<int> status(Object error)
    {
        int64_t code = 0;
        const auto isStatus =
            error.at_key("code").get(code) == simdjson::SUCCESS && code >= 400 && code <= 599;
        return isStatus ? std::optional(int(code)) : std::nullopt;
    }

    static QString qtText(std::string_view text)
    {
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }

    /// Empty if the field is missing or of another type.
    static std::string_view words(Object object, std::string_view key)
    {
        std::string_view text;
        return object.at_key(key).get(text) == simdjson::SUCCESS ? text : std::string_view();
    }

    StreamChunk::Delta delta(Object object)
    {
        const auto thought = words(object, "reasoning_content");
        return {
            .content = text(object, "content"),
            .thought = qtText(thought.empty() ? words(object, "reasoning") : thought),
            .toolCalls = records(object, "tool_calls", &ChunkReader::toolCall),
        };
    }

    ToolCallDelta toolCall(Object object)
    {
        return {
            .index = number(object, "index"),
            .id = text(object, "id"),
            .function = record(object, "function", &ChunkReader::function),
            .extraContent = record(object, "extra_content", &ChunkReader::extraContent),
        };
    }

    ToolCallDelta::Function function(Object object)
    {
        return { text(object, "name"), text(object, "arguments") };
    }

    ToolCallDelta::ExtraContent extraContent(Object object)
    {
        return { record(object, "google", &ChunkReader::google) };
    }

    ToolCallDelta::Google google(Object object) { return { text(object, "thought_signature") }; }

    template <typename Value>
    std::optional<Value> as(Element element)
    {
        Value value;
        if (element.get(value) == simdjson::SUCCESS)
            return value;
        m_hasFailed = true;
        return std::nullopt;
    }

    template <typename Value>
    std::optional<Value> field(Object object, std::string_view key)
    {
        Element element;
        if (object.at_key(key).get(element) != simdjson::SUCCESS || element.is_null())
            return std::nullopt;
        return as<Value>(element);
    }

    std::optional<QString> text(Object object, std::string_view key)
    {
        const auto text = field<std::string_view>(object, key);
        return text ? std::optional(qtText(*text)) : std::nullopt;
    }

    std::optional<int> number(Object object, std::string_view key)
    {
        const auto number = field<double>(object, key);
        if (!number)
            return std::nullopt;
        const auto isInt = *number >= std::numeric_limits<int>::min()
            && *number <= std::numeric_limits<int>::max() && *number == int(*number);
        m_hasFailed = m_hasFailed || !isInt;
        return isInt ? std::optional(int(*number)) : std::nullopt;
    }

    template <typename Record>
    std::optional<Record> record(
        Object object, std::string_view key, Record (ChunkReader::*read)(Object))
    {
        const auto inner = field<Object>(object, key);
        return inner ? std::optional((this->*read)(*inner)) : std::nullopt;
    }

    template <typename Record>
    std::optional<std::vector<Record>> records(
        Object object, std::string_view key, Record (ChunkReader::*read)(Object))
    {
        const auto array = field<simdjson::dom::array>(object, key);
        if (!array)
            return std::nullopt;
        std::vector<Record> result;
        for (const auto element : *array) {
            if (const auto inner = as<Object>(element))
                result.push_back((this->*read)(*inner));
        }
        return result;
    }

    bool m_hasFailed = false;
};

} // namespace

std::optional<StreamChunk> StreamChunk::decode(QByteArrayView json)
{
    simdjson::dom::parser parser;
    Object object;
    if (parser.parse(json.data(), size_t(json.size())).get(object) != simdjson::SUCCESS)
        return std::nullopt;
    ChunkReader reader;
    auto chunk = reader.chunk(object);
    if (reader.hasFailed())
        return std::nullopt;
    return chunk;
}

} // namespace pobblewig
