#pragma once

#include <chrono>
#include <functional>

namespace pobblewig {

/// An instant, in UTC.
using TimePoint = std::chrono::sys_time<std::chrono::milliseconds>;

/// How code gets the current time when it is not passed in; tests pass a clock of their own.
using Clock = std::function<TimePoint()>;

TimePoint systemNow();

} // namespace pobblewig
