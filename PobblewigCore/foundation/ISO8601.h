#pragma once

#include "foundation/Calendar.h"

#include <QString>

#include <optional>

/// Instants as the files spell them: "2026-03-01T08:15:00Z", whole seconds in UTC.
namespace pobblewig::ISO8601 {

/// Cuts to the second; years outside 0 to 9999 become the nearest that can be written.
QString format(TimePoint time);

/// Reads exactly what `format` writes; anything else, fractions included, is nothing.
std::optional<TimePoint> parse(QStringView text);

/// Reads what others write as well: fractions of a second, cut to its thousandths, and any zone.
std::optional<TimePoint> instant(const QString& text);

/// The same, or a time without a zone, which is then in the calendar's.
std::optional<TimePoint> instant(const QString& text, const Calendar& calendar);

} // namespace pobblewig::ISO8601
