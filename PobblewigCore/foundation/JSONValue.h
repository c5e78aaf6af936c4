#pragma once

#include "foundation/JSONCodec.h"

#include <QJsonValue>
#include <QString>

#include <map>
#include <variant>
#include <vector>

namespace pobblewig {

/// A JSON value of any type, as exchanged with models and tools.
class JSONValue {
public:
    using Array = std::vector<JSONValue>;
    using Object = std::map<QString, JSONValue>;

    JSONValue() = default;
    JSONValue(bool value);
    JSONValue(double value);
    JSONValue(int value);
    JSONValue(QString value);
    JSONValue(Array value);
    JSONValue(Object value);
    JSONValue(const char* value) = delete;

    static JSONValue fromJson(const QJsonValue& value);
    QJsonValue toJson() const;

    bool isNull() const { return std::holds_alternative<std::monostate>(m_value); }

    /// Returns the value if it has that type, else null.
    const bool* boolean() const { return std::get_if<bool>(&m_value); }
    const double* number() const { return std::get_if<double>(&m_value); }
    const QString* string() const { return std::get_if<QString>(&m_value); }
    const Array* array() const { return std::get_if<Array>(&m_value); }
    const Object* object() const { return std::get_if<Object>(&m_value); }

    /// For display: strings without quotes, "[a, b]", "{k: v}" with sorted keys.
    QString displayString() const;

    bool operator==(const JSONValue& other) const = default;

    /// Rounds half away from zero and clamps to the bounds. NaN becomes the lower bound.
    static int clampedInt(double value, int lowerBound, int upperBound);

private:
    std::variant<std::monostate, bool, double, QString, Array, Object> m_value;
};

template <>
struct json::Codec<JSONValue> {
    static Decoded<JSONValue> decode(const QJsonValue& value, const Path&)
    {
        return JSONValue::fromJson(value);
    }
    static void write(const JSONValue& value, JSONWriter& writer);
};

} // namespace pobblewig
