#include "conversation/proposals/ActionArguments.h"

#include "foundation/ISO8601.h"
#include "foundation/Text.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace pobblewig {

namespace {

QString cutLine(const QString& text)
{
    return Text::firstCharacters(Text::onOneLine(text), ActionArguments::maxLineCharacters);
}

/// Parses the text inside an array, since a document must be an array or an object.
std::optional<JSONValue> heldJSON(const QString& text)
{
    const auto document = QJsonDocument::fromJson('[' + text.toUtf8() + ']');
    if (document.array().size() != 1)
        return std::nullopt;
    return JSONValue::fromJson(document.array().first());
}

int depth(const JSONValue& value)
{
    int deepest = 0;
    if (const auto* elements = value.array()) {
        for (const auto& element : *elements)
            deepest = std::max(deepest, depth(element) + 1);
    }
    if (const auto* members = value.object()) {
        for (const auto& [key, member] : *members)
            deepest = std::max(deepest, depth(member) + 1);
    }
    return deepest;
}

bool isUsableSetting(const JSONValue& value)
{
    if (depth(value) > ActionArguments::maxValueDepth)
        return false;
    const auto array = QJsonDocument(QJsonArray { value.toJson() }).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array).size() - 2 <= ActionArguments::maxValueUnits;
}

} // namespace

ActionArguments::ActionArguments(JSONValue::Object values)
    : m_values(std::move(values))
{
}

std::optional<QString> ActionArguments::line(const QString& name) const
{
    const auto text = m_values.string(name);
    const auto line = Text::onOneLine(text.value_or(QString()));
    const bool isUsable = !line.trimmed().isEmpty() && cutLine(line) == line;
    return isUsable ? std::optional(line) : std::nullopt;
}

std::optional<QString> ActionArguments::condition(const QString& name) const
{
    const auto text = m_values.string(name);
    return text ? std::optional(cutLine(*text)) : std::nullopt;
}

std::vector<QString> ActionArguments::conditions(const QString& name) const
{
    std::vector<QString> lines;
    for (const auto& text : m_values.strings(name)) {
        auto line = cutLine(text);
        if (!line.trimmed().isEmpty() && lines.size() < maxListEntries)
            lines.push_back(std::move(line));
    }
    return lines;
}

std::optional<QString> ActionArguments::notes() const
{
    const auto text = m_values.string(QStringLiteral("notes"));
    return text ? std::optional(Text::firstCharacters(*text, maxNotesCharacters)) : std::nullopt;
}

std::optional<int> ActionArguments::integer(
    const QString& name, int lowerBound, int upperBound) const
{
    return m_values.integer(name, lowerBound, upperBound);
}

std::optional<GivenTime> ActionArguments::date(const QString& name, const Calendar& calendar) const
{
    const auto text = line(name);
    if (!text)
        return std::nullopt;
    if (const auto time = ISO8601::instant(*text, calendar))
        return GivenTime { *time };
    const auto start = ISO8601::instant(*text + QStringLiteral("T00:00"), calendar);
    return start ? std::optional(GivenTime { *start, true }) : std::nullopt;
}

std::optional<ActionArguments> ActionArguments::nested(const QString& name) const
{
    const auto* object = m_values.value(name).object();
    return object ? std::optional(ActionArguments(*object)) : std::nullopt;
}

std::optional<JSONValue> ActionArguments::settingValue(const QString& name) const
{
    auto value = m_values.value(name);
    if (const auto* text = value.string()) {
        if (text->isEmpty() || text->size() > maxValueUnits)
            return std::nullopt;
        value = heldJSON(*text).value_or(value);
    } else if (value.isNull()) {
        return std::nullopt;
    }
    return isUsableSetting(value) ? std::optional(std::move(value)) : std::nullopt;
}

} // namespace pobblewig
