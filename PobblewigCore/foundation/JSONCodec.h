#pragma once

#include "foundation/EnumNames.h"
#include "foundation/Time.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QUuid>

#include <tl/expected.hpp>

#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

/// Records to JSON and back. A record lists its fields once:
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
/// A required field must be there. An optional one is nothing when absent or null, and nothing is
/// not written. A defaulted one keeps its initialiser when absent or null. A value of the wrong
/// type fails in each of them, and the error names its place: "$.exams[3].id: expected a UUID".
namespace pobblewig::json {

struct DecodeError {
    QString path;
    QString problem;

    QString description() const { return path + QStringLiteral(": ") + problem; }
};

template <typename Value>
using Decoded = tl::expected<Value, DecodeError>;

/// Where a value stands in its document; a chain on the stack.
class Path {
public:
    Path() = default;
    Path(const Path& parent, QString key)
        : m_parent(&parent)
        , m_key(std::move(key))
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
    QString m_key;
    qsizetype m_index = -1;
};

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

/// Specialised for every type that can stand in a file.
template <typename Value>
struct Codec;

template <typename Value>
Decoded<Value> decode(const QJsonValue& value, const Path& path = {})
{
    return Codec<Value>::decode(value, path);
}

template <typename Value>
QJsonValue encode(const Value& value)
{
    return Codec<Value>::encode(value);
}

template <>
struct Codec<bool> {
    static Decoded<bool> decode(const QJsonValue& value, const Path& path);
    static QJsonValue encode(bool value) { return value; }
};

template <>
struct Codec<int> {
    static Decoded<int> decode(const QJsonValue& value, const Path& path);
    static QJsonValue encode(int value) { return value; }
};

template <>
struct Codec<qint64> {
    static Decoded<qint64> decode(const QJsonValue& value, const Path& path);
    static QJsonValue encode(qint64 value) { return value; }
};

template <>
struct Codec<double> {
    static Decoded<double> decode(const QJsonValue& value, const Path& path);
    static QJsonValue encode(double value) { return value; }
};

template <>
struct Codec<QString> {
    static Decoded<QString> decode(const QJsonValue& value, const Path& path);
    static QJsonValue encode(const QString& value) { return value; }
};

template <>
struct Codec<QUuid> {
    static Decoded<QUuid> decode(const QJsonValue& value, const Path& path);
    static QJsonValue encode(const QUuid& value);
};

/// Files keep whole seconds: what is read back is the value cut to its second.
template <>
struct Codec<TimePoint> {
    static Decoded<TimePoint> decode(const QJsonValue& value, const Path& path);
    static QJsonValue encode(TimePoint value);
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
    static QJsonValue encode(Enum value)
    {
        const auto name = EnumNames::name(value);
        return QString::fromLatin1(name.data(), qsizetype(name.size()));
    }
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
    static QJsonValue encode(const std::vector<Element>& elements)
    {
        QJsonArray array;
        for (const auto& element : elements)
            array.append(json::encode(element));
        return array;
    }
};

/// A set is an array sorted ascending by what is written.
template <typename Element>
struct Codec<std::set<Element>> {
    static Decoded<std::set<Element>> decode(const QJsonValue& value, const Path& path)
    {
        auto elements = json::decode<std::vector<Element>>(value, path);
        if (!elements)
            return tl::unexpected(std::move(elements.error()));
        return std::set<Element>(elements->begin(), elements->end());
    }
    static QJsonValue encode(const std::set<Element>& elements)
    {
        std::set<QString> texts;
        for (const auto& element : elements)
            texts.insert(json::encode(element).toString());
        QJsonArray array;
        for (const auto& text : texts)
            array.append(text);
        return array;
    }
};

/// A dictionary is an object; its keys are written as a string value of the key's type would be.
template <typename Key, typename Value>
struct Codec<std::map<Key, Value>> {
    static Decoded<std::map<Key, Value>> decode(const QJsonValue& value, const Path& path)
    {
        if (!value.isObject())
            return wrongType(path, "an object", value);
        const auto object = value.toObject();
        std::map<Key, Value> entries;
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            const Path here(path, entry.key());
            auto key = json::decode<Key>(entry.key(), here);
            if (!key)
                return tl::unexpected(std::move(key.error()));
            auto decoded = json::decode<Value>(entry.value(), here);
            if (!decoded)
                return tl::unexpected(std::move(decoded.error()));
            entries.insert_or_assign(std::move(*key), std::move(*decoded));
        }
        return entries;
    }
    static QJsonValue encode(const std::map<Key, Value>& entries)
    {
        QJsonObject object;
        for (const auto& [key, value] : entries)
            object.insert(json::encode(key).toString(), json::encode(value));
        return object;
    }
};

template <typename Type>
inline constexpr bool isOptional = false;
template <typename Type>
inline constexpr bool isOptional<std::optional<Type>> = true;

/// How a record stands in a file: by its listed fields. A codec that reads more builds on it.
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

    static QJsonValue encode(const Record& record)
    {
        QJsonObject object;
        const auto encodeAll = [&](const auto&... field) {
            (encodeField(object, record, field), ...);
        };
        std::apply(encodeAll, Record::jsonFields());
        return object;
    }

private:
    template <typename Member>
    static std::optional<DecodeError> decodeField(const QJsonObject& object, Record& record,
        const Field<Record, Member>& field, const Path& path)
    {
        const auto key = QString::fromLatin1(field.key);
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

    template <typename Member>
    static void encodeField(
        QJsonObject& object, const Record& record, const Field<Record, Member>& field)
    {
        const auto key = QString::fromLatin1(field.key);
        const auto& member = record.*field.member;
        if constexpr (!isOptional<Member>)
            object.insert(key, json::encode(member));
        else if (member)
            object.insert(key, json::encode(*member));
    }
};

template <typename Record>
    requires requires { Record::jsonFields(); }
struct Codec<Record> : RecordCodec<Record> { };

} // namespace pobblewig::json
