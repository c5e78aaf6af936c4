#pragma once

#include "foundation/Time.h"

#include <QString>

#include <optional>

/// Instants as the files spell them: "2026-03-01T08:15:00Z", whole seconds in UTC.
namespace pobblewig::ISO8601 {

/// Cuts to the second; years outside 0 to 9999 become the nearest that can be written.
QString format(TimePoint time);

/// Reads exactly what `format` writes; anything else, fractions included, is nothing.
std::optional<TimePoint> parse(QStringView text);

} // namespace pobblewig::ISO8601
