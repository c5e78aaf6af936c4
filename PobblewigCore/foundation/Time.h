#pragma once

#include <chrono>
#include <functional>

namespace pobblewig {

/// An instant, in UTC.
using TimePoint = std::chrono::sys_time<std::chrono::milliseconds>;

/// Whoever needs "now" without being handed it asks one of these; tests hand in their own.
using Clock = std::function<TimePoint()>;

TimePoint systemNow();

} // namespace pobblewig
