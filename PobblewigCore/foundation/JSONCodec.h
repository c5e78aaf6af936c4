#pragma once

#include "foundation/EnumNames.h"
#include "foundation/JSONWriter.h"
#include "foundation/Time.h"

#include <QAnyStringView>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QUuid>

#include <tl/expected.hpp>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

/// Converts records to JSON and back. A record lists its fields once:
///
///     struct Exam {
///         QUuid id;
///         std::optional<QString> room;
///         int credits = 5;
///
///         static constexpr auto jsonFields()
///         {
///             using namespace json;
///             return std::tuple { required("id", &Exam::id), optional("room", &Exam::room),
///                 defaulted("credits", &Exam::credits) };
///         }
///     };
///
/// A required field must be present. An optional one is nothing when absent or null, and is not
/// written while it is nothing. A defaulted one keeps its initialiser when absent or null. A value
/// of the wrong type is an error in all of them, which names its place: "$.exams[3].id: expected a
/// UUID".
namespace pobblewig::json {

struct DecodeError {
    QString path;
    QString problem;

    QString description() const { return path + QStringLiteral(": ") + problem; }
};

template <typename Value>
using Decoded = tl::expected<Value, DecodeError>;

/// The position of a value in its document, chained on the stack. The keys must outlive it.
class Path {
public:
    Path() = default;
    Path(const Path& parent, QAnyStringView key)
        : m_parent(&parent)
        , m_key(key)
    {
    }
    Path(const Path& parent, qsizetype index)
        : m_parent(&parent)
        , m_index(index)
    {
    }

    QString text() const;

private:
    const Path* m_parent = nullptr;
    QAnyStringView m_key;
    qsizetype m_index = -1;
};

/// The text in a form that can be written: a lone surrogate, which an escape can produce, becomes a
/// question mark.
QString wellFormed(QString text);

tl::unexpected<DecodeError> wrongType(const Path& path, const char* expected, const QJsonValue&);
tl::unexpected<DecodeError> invalid(const Path& path, const QString& problem);

enum class Policy { required, optional, defaulted };

template <typename Record, typename Member>
struct Field {
    const char* key;
    Member Record::*member;
    Policy policy;
};

template <typename Record, typename Member>
constexpr Field<Record, Member> required(const char* key, Member Record::*member)
{
    return { key, member, Policy::required };
}

template <typename Record, typename Member>
constexpr Field<Record, std::optional<Member>> optional(
    const char* key, std::optional<Member> Record::*member)
{
    return { key, member, Policy::optional };
}

template <typename Record, typename Member>
constexpr Field<Record, Member> defaulted(const char* key, Member Record::*member)
{
    return { key, member, Policy::defaulted };
}

/// Specialised for every type that can appear in a file.
template <typename Value>
struct Codec;

template <typename Value>
Decoded<Value> decode(const QJsonValue& value, const Path& path = {})
{
    return Codec<Value>::decode(value, path);
}

template <typename Value>
void write(const Value& value, JSONWriter& writer)
{
    Codec<Value>::write(value, writer);
}

/// The value as files contain it: indented, with sorted keys, so that equal values give equal
/// bytes.
template <typename Value>
QByteArray text(const Value& value)
{
    JSONWriter writer;
    json::write(value, writer);
    return writer.text();
}

template <>
struct Codec<bool> {
    static Decoded<bool> decode(const QJsonValue& value, const Path& path);
    static void write(bool value, JSONWriter& writer) { writer.value(value); }
};

template <>
struct Codec<int> {
    static Decoded<int> decode(const QJsonValue& value, const Path& path);
    static void write(int value, JSONWriter& writer) { writer.value(qint64(value)); }
};

template <>
struct Codec<qint64> {
    static Decoded<qint64> decode(const QJsonValue& value, const Path& path);
    static void write(qint64 value, JSONWriter& writer) { writer.value(value); }
};

template <>
struct Codec<double> {
    static Decoded<double> decode(const QJsonValue& value, const Path& path);
    static void write(double value, JSONWriter& writer) { writer.value(value); }
};

template <>
struct Codec<QString> {
    static Decoded<QString> decode(const QJsonValue& value, const Path& path);
    static void write(const QString& value, JSONWriter& writer) { writer.value(value); }
};

template <>
struct Codec<QUuid> {
    static Decoded<QUuid> decode(const QJsonValue& value, const Path& path);
    static QString text(const QUuid& value);
    static void write(const QUuid& value, JSONWriter& writer);
};

/// Files keep whole seconds: a time is read back truncated to its second.
template <>
struct Codec<TimePoint> {
    static Decoded<TimePoint> decode(const QJsonValue& value, const Path& path);
    static void write(TimePoint value, JSONWriter& writer);
};

/// An enumeration is written as the name of its case.
template <typename Enum>
    requires std::is_enum_v<Enum>
struct Codec<Enum> {
    static Decoded<Enum> decode(const QJsonValue& value, const Path& path)
    {
        if (!value.isString())
            return wrongType(path, "a name", value);
        if (const auto found = EnumNames::fromName<Enum>(value.toString().toStdString()))
            return *found;
        return invalid(path, QStringLiteral("unknown name"));
    }
    static QString text(Enum value) { return EnumNames::text(value); }
    static void write(Enum value, JSONWriter& writer) { writer.value(EnumNames::name(value)); }
};

template <typename Element>
struct Codec<std::vector<Element>> {
    static Decoded<std::vector<Element>> decode(const QJsonValue& value, const Path& path)
    {
        if (!value.isArray())
            return wrongType(path, "an array", value);
        const auto array = value.toArray();
        std::vector<Element> elements;
        elements.reserve(size_t(array.size()));
        for (qsizetype index = 0; index < array.size(); ++index) {
            auto element = json::decode<Element>(array.at(index), Path(path, index));
            if (!element)
                return tl::unexpected(std::move(element.error()));
            elements.push_back(std::move(*element));
        }
        return elements;
    }
    static void write(const std::vector<Element>& elements, JSONWriter& writer)
    {
        writer.beginArray();
        for (const auto& element : elements)
            json::write(element, writer);
        writer.endArray();
    }
};

/// The string that represents a value as a key or in a sorted set.
template <typename Key>
QString keyText(const Key& key)
{
    return Codec<Key>::text(key);
}

inline QString keyText(const QString& key)
{
    return key;
}

/// A set is an array, sorted in ascending order of the written form.
template <typename Element>
struct Codec<std::set<Element>> {
    static Decoded<std::set<Element>> decode(const QJsonValue& value, const Path& path)
    {
        auto elements = json::decode<std::vector<Element>>(value, path);
        if (!elements)
            return tl::unexpected(std::move(elements.error()));
        return std::set<Element>(elements->begin(), elements->end());
    }
    static void write(const std::set<Element>& elements, JSONWriter& writer)
    {
        std::set<QString> texts;
        for (const auto& element : elements)
            texts.insert(json::keyText(element));
        writer.beginArray();
        for (const auto& text : texts)
            writer.value(text);
        writer.endArray();
    }
};

/// A dictionary is an object; its keys are written as string values of the key's type would be.
template <typename Key, typename Value>
struct Codec<std::map<Key, Value>> {
    static Decoded<std::map<Key, Value>> decode(const QJsonValue& value, const Path& path)
    {
        if (!value.isObject())
            return wrongType(path, "an object", value);
        const auto object = value.toObject();
        std::map<Key, Value> entries;
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            const auto name = entry.key();
            const Path here(path, name);
            auto key = json::decode<Key>(name, here);
            if (!key)
                return tl::unexpected(std::move(key.error()));
            auto decoded = json::decode<Value>(entry.value(), here);
            if (!decoded)
                return tl::unexpected(std::move(decoded.error()));
            entries.insert_or_assign(std::move(*key), std::move(*decoded));
        }
        return entries;
    }
    static void write(const std::map<Key, Value>& entries, JSONWriter& writer)
    {
        std::map<QString, const Value*> sorted;
        for (const auto& [key, value] : entries)
            sorted.emplace(json::keyText(key), &value);
        writer.beginObject();
        for (const auto& [key, value] : sorted) {
            writer.key(key);
            json::write(*value, writer);
        }
        writer.endObject();
    }
};

template <typename Type>
inline constexpr bool isOptional = false;
template <typename Type>
inline constexpr bool isOptional<std::optional<Type>> = true;

/// Reads and writes a record by its listed fields. A codec that reads more builds on this one.
template <typename Record>
struct RecordCodec {
    static Decoded<Record> decode(const QJsonValue& value, const Path& path)
    {
        if (!value.isObject())
            return wrongType(path, "an object", value);
        const auto object = value.toObject();
        Record record {};
        std::optional<DecodeError> error;
        const auto decodeAll = [&](const auto&... field) {
            ((error = decodeField(object, record, field, path)) || ...);
        };
        std::apply(decodeAll, Record::jsonFields());
        if (error)
            return tl::unexpected(std::move(*error));
        return record;
    }

    static void write(const Record& record, JSONWriter& writer)
    {
        static const auto fields = sortedFields(std::make_index_sequence<fieldCount>());
        writer.beginObject();
        for (const auto& [key, writeField] : fields)
            writeField(record, writer);
        writer.endObject();
    }

private:
    template <typename Member>
    static std::optional<DecodeError> decodeField(const QJsonObject& object, Record& record,
        const Field<Record, Member>& field, const Path& path)
    {
        const QLatin1StringView key(field.key);
        const auto value = object.value(key);
        if (field.policy != Policy::required && (value.isUndefined() || value.isNull()))
            return std::nullopt;
        const Path here(path, key);
        if (value.isUndefined())
            return invalid(here, QStringLiteral("missing")).value();
        if constexpr (isOptional<Member>)
            return assign(
                record.*field.member, json::decode<typename Member::value_type>(value, here));
        else
            return assign(record.*field.member, json::decode<Member>(value, here));
    }

    template <typename Target, typename Member>
    static std::optional<DecodeError> assign(Target& target, Decoded<Member> decoded)
    {
        if (!decoded)
            return std::move(decoded.error());
        target = std::move(*decoded);
        return std::nullopt;
    }

    using FieldWriter = void (*)(const Record&, JSONWriter&);
    static constexpr auto fieldCount = std::tuple_size_v<decltype(Record::jsonFields())>;

    template <std::size_t... Index>
    static auto sortedFields(std::index_sequence<Index...>)
    {
        std::array<std::pair<std::string_view, FieldWriter>, fieldCount> fields { std::pair {
            std::string_view(std::get<Index>(Record::jsonFields()).key), &writeField<Index> }... };
        std::ranges::sort(fields, {}, &std::pair<std::string_view, FieldWriter>::first);
        return fields;
    }

    template <std::size_t Index>
    static void writeField(const Record& record, JSONWriter& writer)
    {
        constexpr auto field = std::get<Index>(Record::jsonFields());
        const auto& member = record.*field.member;
        if constexpr (!isOptional<std::remove_cvref_t<decltype(member)>>) {
            writer.key(field.key);
            json::write(member, writer);
        } else if (member) {
            writer.key(field.key);
            json::write(*member, writer);
        }
    }
};

template <typename Record>
    requires requires { Record::jsonFields(); }
struct Codec<Record> : RecordCodec<Record> { };

} // namespace pobblewig::json
