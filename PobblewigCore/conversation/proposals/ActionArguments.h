#pragma once

#include "foundation/Calendar.h"
#include "tools/ToolArguments.h"

namespace pobblewig {

/// What a model wants of an action, within what the program is ready to keep and to show: a line
/// that is too long counts as absent, whatever else is too long is cut.
class ActionArguments {
public:
    static constexpr qsizetype maxLineCharacters = 1000;
    static constexpr qsizetype maxNotesCharacters = 4000;
    static constexpr size_t maxListEntries = 100;
    static constexpr qsizetype maxValueUnits = 20000;
    static constexpr int maxValueDepth = 32;

    explicit ActionArguments(JSONValue::Object values);

    /// Without what would break or turn a line; nothing if only blanks are left.
    std::optional<QString> line(const QString& name) const;
    /// What narrows something down: for once cut, since without it more would be meant.
    std::optional<QString> condition(const QString& name) const;
    /// Cut as well; without those of blanks only.
    std::vector<QString> conditions(const QString& name) const;
    std::optional<QString> notes() const;
    std::optional<int> integer(const QString& name, int lowerBound, int upperBound) const;
    std::optional<TimePoint> date(const QString& name, const Calendar& calendar) const;

    /// Itself an object of arguments.
    std::optional<ActionArguments> nested(const QString& name) const;

    /// Of a setting. A string that holds JSON counts as what it holds.
    std::optional<JSONValue> settingValue(const QString& name) const;

private:
    ToolArguments m_values;
};

} // namespace pobblewig
