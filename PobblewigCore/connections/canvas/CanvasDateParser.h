#pragma once

#include "foundation/Time.h"

#include <QString>

#include <optional>

/// Dates as Canvas writes them.
namespace pobblewig::CanvasDateParser {

/// With or without fractions of a second. Returns nothing for an absent or unreadable date.
std::optional<TimePoint> parse(const std::optional<QString>& text);

QString string(TimePoint time);

} // namespace pobblewig::CanvasDateParser
