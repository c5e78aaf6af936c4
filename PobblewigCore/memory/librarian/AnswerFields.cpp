#include "memory/librarian/AnswerFields.h"

#include "foundation/Text.h"

#include <algorithm>
#include <span>

namespace pobblewig {

namespace {

constexpr int deepestDetail = 4;
constexpr double mostHours = 365 * 24;

std::optional<TimePoint> after(double hours, TimePoint now)
{
    if (hours <= 0)
        return std::nullopt;
    const std::chrono::duration<double, std::ratio<3600>> life(std::min(hours, mostHours));
    return now + std::chrono::duration_cast<std::chrono::milliseconds>(life);
}

QString cutLine(const QString& text)
{
    return Text::firstCharacters(Text::onOneLine(text).trimmed(), AnswerFields::longestLine);
}

bool isShallow(const JSONValue& value, int levels)
{
    if (levels == 0)
        return false;
    const auto isFine = [&](const JSONValue& inner) { return isShallow(inner, levels - 1); };
    if (const auto* elements = value.array())
        return std::ranges::all_of(*elements, isFine);
    if (const auto* members = value.object())
        return std::ranges::all_of(
            *members, [&](const auto& member) { return isFine(member.second); });
    return true;
}

// Checks the depth first, because the text of a deep value takes long to make.
bool isSmall(const JSONValue& value)
{
    return isShallow(value, deepestDetail)
        && value.displayString().size() <= AnswerFields::longestLine;
}

std::span<const JSONValue> firstOf(const JSONValue& list, size_t most)
{
    const auto* elements = list.array();
    if (!elements)
        return {};
    return std::span(*elements).first(std::min(elements->size(), most));
}

} // namespace

AnswerFields::AnswerFields(JSONValue::Object values)
    : m_values(std::move(values))
{
}

std::optional<size_t> AnswerFields::elementCount(const QString& name) const
{
    const auto* elements = m_values.value(name).array();
    return elements ? std::optional(elements->size()) : std::nullopt;
}

QString AnswerFields::line(const QString& name) const
{
    return Text::onOneLine(m_values.string(name).value_or(QString())).trimmed();
}

QString AnswerFields::shortLine(const QString& name) const
{
    return cutLine(m_values.string(name).value_or(QString()));
}

QString AnswerFields::prose(const QString& name) const
{
    const auto text = m_values.string(name).value_or(QString()).trimmed();
    return Text::firstCharacters(text, longestProse);
}

std::vector<QString> AnswerFields::shortLines(const QString& name) const
{
    std::vector<QString> lines;
    for (const auto& element : firstOf(m_values.value(name), mostEntries)) {
        if (const auto* text = element.string())
            lines.push_back(cutLine(*text));
    }
    std::erase_if(lines, [](const auto& line) { return line.isEmpty(); });
    return lines;
}

std::optional<bool> AnswerFields::boolean(const QString& name) const
{
    const auto* found = m_values.value(name).boolean();
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<double> AnswerFields::number(const QString& name) const
{
    return m_values.number(name);
}

std::vector<AnswerFields> AnswerFields::objects(const QString& name, size_t most) const
{
    std::vector<AnswerFields> objects;
    for (const auto& element : firstOf(m_values.value(name), most)) {
        if (const auto* members = element.object())
            objects.emplace_back(*members);
    }
    return objects;
}

std::optional<double> AnswerFields::confidence() const
{
    const auto told = number(QStringLiteral("confidence"));
    return told ? std::optional(std::clamp(*told, 0.0, 1.0)) : std::nullopt;
}

NewNote AnswerFields::note(MemorySource source, TimePoint now) const
{
    return {
        .text = line(QStringLiteral("text")),
        .category = named(QStringLiteral("category"), MemoryCategory::misc),
        .kind = named(QStringLiteral("kind"), MemoryKind::fact),
        .source = named(QStringLiteral("source"), source),
        .confidence = confidence(),
        .isTemporary = boolean(QStringLiteral("isTemporary")).value_or(false),
        .expiresAt = after(number(QStringLiteral("expiresInHours")).value_or(0), now),
    };
}

JSONValue::Object AnswerFields::smallMembers(const QString& name) const
{
    const auto* members = m_values.value(name).object();
    if (!members)
        return {};
    auto small = *members;
    std::erase_if(small, [](const auto& member) {
        return member.first.size() > longestLine || !isSmall(member.second);
    });
    while (small.size() > mostEntries)
        small.erase(std::prev(small.end()));
    return small;
}

} // namespace pobblewig
