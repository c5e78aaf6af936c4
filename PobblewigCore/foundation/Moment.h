#pragma once

#include "foundation/Calendar.h"
#include "foundation/Time.h"

#include <functional>

namespace pobblewig {

/// The user's clock and calendar. Both are read again at each use, since time passes and users
/// travel.
struct Moment {
    Clock clock = systemNow;
    std::function<Calendar()> calendar = Calendar::current;

    TimePoint now() const { return clock(); }
};

} // namespace pobblewig
