#pragma once

#include "foundation/Calendar.h"

#include <QString>

#include <optional>

/// Instants as the files write them: "2026-03-01T08:15:00Z", whole seconds in UTC.
namespace pobblewig::ISO8601 {

/// Truncates to the second. Years outside 0 to 9999 become the nearest that can be written.
QString format(TimePoint time);

/// Reads exactly what `format` writes; returns nothing for anything else, fractions included.
std::optional<TimePoint> parse(QStringView text);

/// Also reads fractions of a second, truncated to milliseconds, any zone, a time without seconds,
/// and a blank in place of the "T".
std::optional<TimePoint> instant(const QString& text);

/// Does the same, and reads a time without a zone in the calendar's zone.
std::optional<TimePoint> instant(const QString& text, const Calendar& calendar);

} // namespace pobblewig::ISO8601
