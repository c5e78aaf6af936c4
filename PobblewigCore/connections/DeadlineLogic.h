#pragma once

#include "connections/SchoolItem.h"
#include "foundation/Calendar.h"

#include <functional>
#include <optional>
#include <vector>

/// What the deadlines of all school services have in common.
namespace pobblewig::DeadlineLogic {

struct Facts {
    TimePoint due;
    QString course;
    std::optional<double> points;
    /// "submitted", "graded" or "unsubmitted".
    QString state;
};

/// "Due 27 Nov 2026, 09:00 · Psychology · 10 pts · unsubmitted".
QString summary(const Facts& facts, const Calendar& calendar);

/// In the shortest form that says the same: "10", "7.5".
QString formatPoints(double points);

/// Returns nothing if the date is missing or unreadable.
std::optional<TimePoint> dueDate(const ReferenceItem& item);

/// The deadlines after `now` within the window, soonest first.
std::vector<ReferenceItem> upcoming(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit);

/// The wanted deadlines within the hours of which nothing says that they are submitted, soonest
/// first.
std::vector<ReferenceItem> unsubmitted(const std::vector<ReferenceItem>& items, TimePoint now,
    int windowHours, const std::function<bool(const ReferenceItem&)>& isWanted);

struct Day {
    TimePoint now;
    const Calendar& calendar;
};

/// "{prefix}-{id}-{day}", with the id that the service gave, else the item's own.
QString reminderKey(
    QStringView prefix, QStringView workKey, const ReferenceItem& item, const Day& day);

} // namespace pobblewig::DeadlineLogic
