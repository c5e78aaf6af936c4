#pragma once

#include <chrono>
#include <functional>

namespace pobblewig {

/// An instant, in UTC.
using TimePoint = std::chrono::sys_time<std::chrono::milliseconds>;

/// The source of the current time where it is not passed in; tests pass their own.
using Clock = std::function<TimePoint()>;

TimePoint systemNow();

} // namespace pobblewig
