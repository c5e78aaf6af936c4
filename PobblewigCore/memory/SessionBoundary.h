#pragma once

#include "foundation/Calendar.h"

#include <QString>

/// Where one day of the user's ends and the next begins.
namespace pobblewig::SessionBoundary {

/// Such as "2026-03-01".
QString dayKey(TimePoint time, const Calendar& calendar);

} // namespace pobblewig::SessionBoundary
