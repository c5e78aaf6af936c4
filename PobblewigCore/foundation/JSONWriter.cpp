#include "foundation/JSONWriter.h"

#if defined(__SSE2__)
#define RAPIDJSON_SSE2
#elif defined(__ARM_NEON)
#define RAPIDJSON_NEON
#endif
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cmath>
#include <cstring>

namespace pobblewig {

namespace {

constexpr double largestExactInteger = 9007199254740992.0;

}

struct JSONWriter::Output {
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer { buffer };
};

JSONWriter::JSONWriter()
    : m_output(std::make_unique<Output>())
{
}

JSONWriter::~JSONWriter() = default;

void JSONWriter::beginObject()
{
    m_output->writer.StartObject();
}

void JSONWriter::key(QStringView name)
{
    value(name);
}

void JSONWriter::key(const char* name)
{
    m_output->writer.Key(name, rapidjson::SizeType(std::strlen(name)));
}

void JSONWriter::endObject()
{
    m_output->writer.EndObject();
}

void JSONWriter::beginArray()
{
    m_output->writer.StartArray();
}

void JSONWriter::endArray()
{
    m_output->writer.EndArray();
}

void JSONWriter::null()
{
    m_output->writer.Null();
}

void JSONWriter::value(bool value)
{
    m_output->writer.Bool(value);
}

void JSONWriter::value(qint64 value)
{
    m_output->writer.Int64(value);
}

void JSONWriter::value(double number)
{
    if (!std::isfinite(number))
        null();
    else if (std::trunc(number) == number && std::abs(number) <= largestExactInteger)
        value(qint64(number));
    else
        m_output->writer.Double(number);
}

void JSONWriter::value(QStringView text)
{
    // A lone surrogate becomes a question mark here, because the writer would reject it.
    const auto bytes = text.toUtf8();
    m_output->writer.String(bytes.constData(), rapidjson::SizeType(bytes.size()));
}

void JSONWriter::value(std::string_view text)
{
    m_output->writer.String(text.data(), rapidjson::SizeType(text.size()));
}

QByteArray JSONWriter::text()
{
    auto& buffer = m_output->buffer;
    buffer.Put('\n');
    return { buffer.GetString(), qsizetype(buffer.GetSize()) };
}

} // namespace pobblewig
