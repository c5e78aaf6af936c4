#include "foundation/JSONValue.h"

#include "foundation/Overloaded.h"

#include <QLocale>
#include <QStringList>

#include <cmath>

namespace pobblewig {

namespace {

QString displayNumber(double value)
{
    constexpr double largestExact = 9007199254740992.0;
    if (std::trunc(value) == value && std::abs(value) <= largestExact)
        return QString::number(value, 'f', 0);
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

JSONValue::JSONValue(bool value)
    : m_value(value)
{
}

JSONValue::JSONValue(double value)
    : m_value(value)
{
}

JSONValue::JSONValue(int value)
    : m_value(double(value))
{
}

JSONValue::JSONValue(QString value)
    : m_value(std::move(value))
{
}

JSONValue::JSONValue(Array value)
    : m_value(std::move(value))
{
}

JSONValue::JSONValue(Object value)
    : m_value(std::move(value))
{
}

JSONValue JSONValue::fromJson(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::Double:
        return value.toDouble();
    case QJsonValue::String:
        return json::wellFormed(value.toString());
    case QJsonValue::Array: {
        Array elements;
        for (const auto& element : value.toArray())
            elements.push_back(fromJson(element));
        return elements;
    }
    case QJsonValue::Object: {
        Object members;
        const auto object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member)
            members.emplace(json::wellFormed(member.key()), fromJson(member.value()));
        return members;
    }
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        break;
    }
    return {};
}

QJsonValue JSONValue::toJson() const
{
    return std::visit(Overloaded {
                          [](std::monostate) -> QJsonValue { return QJsonValue::Null; },
                          [](const Array& elements) -> QJsonValue {
                              QJsonArray array;
                              for (const auto& element : elements)
                                  array.append(element.toJson());
                              return array;
                          },
                          [](const Object& members) -> QJsonValue {
                              QJsonObject object;
                              for (const auto& [key, member] : members)
                                  object.insert(key, member.toJson());
                              return object;
                          },
                          [](const auto& value) -> QJsonValue { return value; },
                      },
        m_value);
}

QString JSONValue::displayString() const
{
    return std::visit(
        Overloaded {
            [](std::monostate) { return QStringLiteral("null"); },
            [](bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); },
            [](double value) { return displayNumber(value); },
            [](const QString& value) { return value; },
            [](const Array& elements) {
                QStringList texts;
                for (const auto& element : elements)
                    texts.append(element.displayString());
                return QStringLiteral("[%1]").arg(texts.join(QStringLiteral(", ")));
            },
            [](const Object& members) {
                QStringList texts;
                for (const auto& [key, member] : members)
                    texts.append(key + QStringLiteral(": ") + member.displayString());
                return QStringLiteral("{%1}").arg(texts.join(QStringLiteral(", ")));
            },
        },
        m_value);
}

int JSONValue::clampedInt(double value, int lowerBound, int upperBound)
{
    if (std::isnan(value) || value <= lowerBound)
        return lowerBound;
    if (value >= upperBound)
        return upperBound;
    return int(std::round(value));
}

void json::Codec<JSONValue>::write(const JSONValue& value, JSONWriter& writer)
{
    if (const auto* boolean = value.boolean())
        writer.value(*boolean);
    else if (const auto* number = value.number())
        writer.value(*number);
    else if (const auto* string = value.string())
        writer.value(*string);
    else if (const auto* array = value.array())
        json::write(*array, writer);
    else if (const auto* object = value.object())
        json::write(*object, writer);
    else
        writer.null();
}

} // namespace pobblewig
