#pragma once

#include "activity/ActivitySession.h"
#include "activity/AppCategory.h"
#include "foundation/Calendar.h"

#include <map>
#include <vector>

namespace pobblewig {

/// What was in front for a while.
struct ActivitySpan {
    QString application;
    AppCategory category = AppCategory::other;
    TimePoint from;
    TimePoint to;
    /// The user was away.
    bool isIdle = false;

    double seconds() const { return std::chrono::duration<double>(to - from).count(); }

    bool operator==(const ActivitySpan&) const = default;
};

struct ApplicationTime {
    QString name;
    AppCategory category = AppCategory::other;
    double seconds = 0;

    bool operator==(const ApplicationTime&) const = default;
};

/// A day of the user, from midnight to midnight.
struct ActivityDay {
    QDate day;
    /// 23 to 25 hours apart.
    TimePoint start;
    TimePoint end;
    /// Oldest first, cut to the day. Nothing was observed between them.
    std::vector<ActivitySpan> spans;

    bool operator==(const ActivityDay&) const = default;
};

/// Looks at the history day by day.
namespace ActivityDayLogic {

/// What lies between two times, oldest first.
std::vector<ActivitySpan> between(
    const std::vector<ActivitySession>& sessions, TimePoint from, TimePoint to);

ActivityDay day(const std::vector<ActivitySession>& sessions, QDate day, const Calendar& calendar);

/// The seven days of the week around a day, by the locale's first day of a week.
std::vector<ActivityDay> week(
    const std::vector<ActivitySession>& sessions, QDate day, const Calendar& calendar);

/// Seconds in each category that was used, without those when the user was away.
std::map<AppCategory, double> categories(const std::vector<ActivityDay>& days);

/// Longest first, without the time when the user was away.
std::vector<ApplicationTime> applications(const std::vector<ActivityDay>& days);

/// Seconds when the user was away.
double idle(const std::vector<ActivityDay>& days);

/// What remains of the sessions, newest first, without what lies between the times. A session that
/// reaches beyond them is cut, one around them becomes two.
std::vector<ActivitySession> without(
    std::vector<ActivitySession> sessions, TimePoint from, TimePoint to);

} // namespace ActivityDayLogic

} // namespace pobblewig
