#pragma once

#include "foundation/JSONValue.h"

#include <tl/expected.hpp>

#include <map>
#include <optional>
#include <vector>

namespace pobblewig {

struct ArgError {
    enum class Kind { missingArgument, badDate, unknownTool };

    static ArgError missingArgument(QString name);
    static ArgError badDate(QString value);
    static ArgError unknownTool(QString name);

    Kind kind = Kind::missingArgument;
    QString subject;

    QString description() const;
};

/// The arguments that a model passed to a tool. Models make mistakes: a value of the wrong type
/// counts as absent, and so does an empty string.
class ToolArguments {
public:
    explicit ToolArguments(std::map<QString, JSONValue> values);

    tl::expected<QString, ArgError> requiredString(const QString& name) const;
    std::optional<QString> string(const QString& name) const;

    /// The strings in an array, ignoring its other elements. May be empty.
    tl::expected<std::vector<QString>, ArgError> requiredStrings(const QString& name) const;
    std::vector<QString> strings(const QString& name) const;

    /// The value, clamped to the bounds.
    std::optional<int> integer(const QString& name, int lowerBound, int upperBound) const;
    std::optional<double> number(const QString& name) const;

    /// What a date without a time means, in UTC.
    enum class BareDate { startOfDay, endOfDay };

    /// Reads ISO 8601 with or without fractions of a second, or a bare date.
    tl::expected<std::optional<TimePoint>, ArgError> date(
        const QString& name, BareDate meaning = BareDate::startOfDay) const;

    /// The value unchanged, or null if there is none.
    const JSONValue& value(const QString& name) const;

private:
    std::map<QString, JSONValue> m_values;
};

} // namespace pobblewig
