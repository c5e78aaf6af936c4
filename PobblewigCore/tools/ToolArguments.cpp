#include "tools/ToolArguments.h"

#include "foundation/ISO8601.h"

namespace pobblewig {

namespace {

constexpr auto wholeDay = std::chrono::days(1) - std::chrono::milliseconds(1);

std::optional<TimePoint> midnight(const QString& day)
{
    return ISO8601::parse(QString(day + QStringLiteral("T00:00:00Z")));
}

std::vector<QString> stringsOf(const JSONValue::Array& elements)
{
    std::vector<QString> strings;
    strings.reserve(elements.size());
    for (const auto& element : elements) {
        if (const auto* string = element.string())
            strings.push_back(*string);
    }
    return strings;
}

} // namespace

ArgError ArgError::missingArgument(QString name)
{
    return { Kind::missingArgument, std::move(name) };
}

ArgError ArgError::badDate(QString value)
{
    return { Kind::badDate, std::move(value) };
}

ArgError ArgError::unknownTool(QString name)
{
    return { Kind::unknownTool, std::move(name) };
}

QString ArgError::description() const
{
    switch (kind) {
    case Kind::missingArgument:
        return QStringLiteral("missing required argument: ") + subject;
    case Kind::badDate:
        return QStringLiteral("not an ISO-8601 date: ") + subject;
    case Kind::unknownTool:
        return QStringLiteral("unknown tool: ") + subject;
    }
    Q_UNREACHABLE();
}

ToolArguments::ToolArguments(std::map<QString, JSONValue> values)
    : m_values(std::move(values))
{
}

tl::expected<QString, ArgError> ToolArguments::requiredString(const QString& name) const
{
    auto found = string(name);
    if (!found)
        return tl::unexpected(ArgError::missingArgument(name));
    return *std::move(found);
}

std::optional<QString> ToolArguments::string(const QString& name) const
{
    const auto* found = value(name).string();
    if (!found || found->isEmpty())
        return std::nullopt;
    return *found;
}

tl::expected<std::vector<QString>, ArgError> ToolArguments::requiredStrings(
    const QString& name) const
{
    const auto* elements = value(name).array();
    if (!elements)
        return tl::unexpected(ArgError::missingArgument(name));
    return stringsOf(*elements);
}

std::vector<QString> ToolArguments::strings(const QString& name) const
{
    return requiredStrings(name).value_or(std::vector<QString>());
}

std::optional<int> ToolArguments::integer(const QString& name, int lowerBound, int upperBound) const
{
    const auto found = number(name);
    if (!found)
        return std::nullopt;
    return JSONValue::clampedInt(*found, lowerBound, upperBound);
}

std::optional<double> ToolArguments::number(const QString& name) const
{
    const auto* found = value(name).number();
    return found ? std::optional(*found) : std::nullopt;
}

tl::expected<std::optional<TimePoint>, ArgError> ToolArguments::date(
    const QString& name, BareDate meaning) const
{
    const auto text = string(name);
    if (!text)
        return std::nullopt;
    if (const auto time = ISO8601::instant(*text))
        return time;
    if (const auto time = midnight(*text))
        return meaning == BareDate::endOfDay ? *time + wholeDay : *time;
    return tl::unexpected(ArgError::badDate(*text));
}

const JSONValue& ToolArguments::value(const QString& name) const
{
    static const JSONValue absent;
    const auto found = m_values.find(name);
    return found == m_values.end() ? absent : found->second;
}

} // namespace pobblewig
