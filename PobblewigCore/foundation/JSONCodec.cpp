#include "foundation/JSONCodec.h"

#include "foundation/ISO8601.h"

#include <limits>

namespace pobblewig::json {

namespace {

QString typeName(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("null");
    case QJsonValue::Bool:
        return QStringLiteral("a Boolean");
    case QJsonValue::Double:
        return QStringLiteral("a number");
    case QJsonValue::String:
        return QStringLiteral("a string");
    case QJsonValue::Array:
        return QStringLiteral("an array");
    case QJsonValue::Object:
        return QStringLiteral("an object");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}

/// Formats as "5F0C7A2E-95B4-4B6E-9A55-0D9D3C6F1F10"; QUuid::toString() takes ten times as long.
std::array<char, 36> upperCase(const QUuid& id)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::array<char, 36> text;
    auto* at = text.data();
    const auto put = [&](quint64 number, int count) {
        for (auto shift = 4 * (count - 1); shift >= 0; shift -= 4)
            *at++ = digits[(number >> shift) & 15];
    };
    put(id.data1, 8);
    for (const auto part : { id.data2, id.data3 }) {
        *at++ = '-';
        put(part, 4);
    }
    for (int index = 0; index < 8; ++index) {
        if (index == 0 || index == 2)
            *at++ = '-';
        put(id.data4[index], 2);
    }
    return text;
}

} // namespace

QString Path::text() const
{
    if (!m_parent)
        return QStringLiteral("$");
    if (m_index >= 0)
        return QStringLiteral("%1[%2]").arg(m_parent->text()).arg(m_index);
    return m_parent->text() + u'.' + m_key.toString();
}

QString wellFormed(QString text)
{
    return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}

tl::unexpected<DecodeError> wrongType(
    const Path& path, const char* expected, const QJsonValue& value)
{
    return invalid(path,
        QStringLiteral("expected %1, found %2").arg(QLatin1String(expected), typeName(value)));
}

tl::unexpected<DecodeError> invalid(const Path& path, const QString& problem)
{
    return tl::unexpected(DecodeError { path.text(), problem });
}

Decoded<bool> Codec<bool>::decode(const QJsonValue& value, const Path& path)
{
    if (!value.isBool())
        return wrongType(path, "a Boolean", value);
    return value.toBool();
}

Decoded<int> Codec<int>::decode(const QJsonValue& value, const Path& path)
{
    const auto wide = json::decode<qint64>(value, path);
    if (!wide)
        return tl::unexpected(wide.error());
    if (!std::in_range<int>(*wide))
        return invalid(path, QStringLiteral("%1 is out of range").arg(*wide));
    return int(*wide);
}

Decoded<qint64> Codec<qint64>::decode(const QJsonValue& value, const Path& path)
{
    if (!value.isDouble())
        return wrongType(path, "an integer", value);
    // Two different fallbacks distinguish a stored integer from a number that is not one.
    if (value.toInteger(0) != value.toInteger(1))
        return invalid(path, QStringLiteral("%1 is not an integer").arg(value.toDouble()));
    return value.toInteger();
}

Decoded<double> Codec<double>::decode(const QJsonValue& value, const Path& path)
{
    if (!value.isDouble())
        return wrongType(path, "a number", value);
    return value.toDouble();
}

Decoded<QString> Codec<QString>::decode(const QJsonValue& value, const Path& path)
{
    if (!value.isString())
        return wrongType(path, "a string", value);
    return wellFormed(value.toString());
}

Decoded<QUuid> Codec<QUuid>::decode(const QJsonValue& value, const Path& path)
{
    if (!value.isString())
        return wrongType(path, "a UUID", value);
    const auto text = value.toString();
    const auto id = QUuid::fromString(text);
    // The null UUID can be written, so it must be readable; one would otherwise cost the whole
    // file.
    const auto isUnreadable = id.isNull() && text != Codec::text(id);
    if (isUnreadable || text.size() != 36)
        return invalid(path, QStringLiteral("not a UUID"));
    return id;
}

QString Codec<QUuid>::text(const QUuid& value)
{
    const auto letters = upperCase(value);
    return QString::fromLatin1(letters.data(), letters.size());
}

void Codec<QUuid>::write(const QUuid& value, JSONWriter& writer)
{
    const auto letters = upperCase(value);
    writer.value(std::string_view(letters.data(), letters.size()));
}

Decoded<TimePoint> Codec<TimePoint>::decode(const QJsonValue& value, const Path& path)
{
    if (!value.isString())
        return wrongType(path, "a date", value);
    if (const auto time = ISO8601::parse(value.toString()))
        return *time;
    return invalid(path, QStringLiteral("not a date such as 2026-03-01T08:15:00Z"));
}

void Codec<TimePoint>::write(TimePoint value, JSONWriter& writer)
{
    writer.value(ISO8601::format(value));
}

} // namespace pobblewig::json
