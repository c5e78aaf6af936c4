#pragma once

#include "foundation/Time.h"
#include "settings/AccentChoice.h"

#include <QDate>
#include <QUrl>

#include <optional>
#include <vector>

namespace pobblewig {

/// A deadline, an event or a reminder of the next days, as the user reads it.
struct ComingUpEntry {
    enum class Kind { deadline, event, reminder };
    enum class Progress { open, submitted, graded, completed };
    /// What the time says. Without one the entry is about the day as a whole.
    enum class Timing { at, until, none };

    Kind kind = Kind::deadline;
    QString title;
    /// The course, the calendar or the list; empty if it is not known.
    QString group = {};
    /// Belongs to the group.
    AccentChoice color = AccentChoice::graphite;
    /// Missing for a reminder that is due some time.
    std::optional<TimePoint> time = std::nullopt;
    Timing timing = Timing::at;
    std::optional<double> points = std::nullopt;
    /// Where it can be looked up, an https address or nothing.
    QUrl link = {};
    Progress progress = Progress::open;

    bool isDone() const { return progress != Progress::open; }

    bool operator==(const ComingUpEntry&) const = default;
};

/// The entries under one heading.
struct ComingUpSection {
    enum class Kind { overdue, day, someTime };

    Kind kind = Kind::day;
    /// Only of a day.
    QDate day = {};
    std::vector<ComingUpEntry> entries;

    bool operator==(const ComingUpSection&) const = default;
};

} // namespace pobblewig
