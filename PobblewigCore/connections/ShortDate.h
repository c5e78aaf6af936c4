#pragma once

#include "foundation/Calendar.h"

namespace pobblewig {

/// Day and time in their short form, such as "27 Nov 2026, 09:00".
QString shortDateTime(TimePoint time, const Calendar& calendar);

} // namespace pobblewig
