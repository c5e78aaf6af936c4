#pragma once

#include "PobblewigDesktop/activity/ChartPane.h"
#include "activity/ActivityDayLogic.h"
#include "memory/history/UsageCounter.h"

/// The user's activity and the use of the models, as charts.
namespace pobblewig::ActivityCharts {

/// Such as "2 h 5 min"; at least "under 1 min".
QString duration(double seconds);

QString name(AppCategory category);

/// What was in front from midnight to midnight. Gaps of 5 minutes and more are named.
ChartContents line(const ActivityDay& day, const Calendar& calendar);

ChartContents categories(const std::vector<ActivityDay>& days);

/// Those with the most time; the rest is added up.
ChartContents applications(const std::vector<ActivityDay>& days);

/// One column for each day, by category.
ChartContents days(const std::vector<ActivityDay>& days, const Calendar& calendar);

/// Tokens by the model that used them.
ChartContents lanes(const UsageCounter::Snapshot& usage, const QLocale& locale);

/// Tokens of the two weeks up to a day.
ChartContents usage(const std::vector<UsageCounter::Day>& days, QDate today, const QLocale& locale);

} // namespace pobblewig::ActivityCharts
