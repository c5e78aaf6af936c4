#pragma once

#include "foundation/Calendar.h"
#include "tools/ToolArguments.h"

namespace pobblewig {

/// A time that a model gives.
struct GivenTime {
    TimePoint time;
    /// The model named a day only, which begins at `time`.
    bool isDay = false;
};

/// A model's arguments of an action, limited to what the program can keep and show: a line that is
/// too long counts as absent, other values are cut.
class ActionArguments {
public:
    static constexpr qsizetype maxLineCharacters = 1000;
    static constexpr qsizetype maxNotesCharacters = 4000;
    static constexpr size_t maxListEntries = 100;
    static constexpr qsizetype maxValueUnits = 20000;
    static constexpr int maxValueDepth = 32;

    explicit ActionArguments(JSONValue::Object values);

    /// The text on one line, without characters that change its direction. Returns nothing if it is
    /// blank.
    std::optional<QString> line(const QString& name) const;
    /// A text that narrows a request. Cut rather than dropped, since without it more would match.
    std::optional<QString> condition(const QString& name) const;
    /// Texts that narrow a request, cut as well. Blank ones are left out.
    std::vector<QString> conditions(const QString& name) const;
    std::optional<QString> notes() const;
    std::optional<int> integer(const QString& name, int lowerBound, int upperBound) const;
    std::optional<GivenTime> date(const QString& name, const Calendar& calendar) const;

    /// A nested object of arguments.
    std::optional<ActionArguments> nested(const QString& name) const;

    /// The value for a setting. A string that contains JSON counts as that JSON.
    std::optional<JSONValue> settingValue(const QString& name) const;

private:
    ToolArguments m_values;
};

} // namespace pobblewig
