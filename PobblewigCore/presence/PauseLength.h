#pragma once

namespace pobblewig {

/// How long the user pauses observation.
enum class PauseLength { halfAnHour, untilTomorrow, untilResumed };

} // namespace pobblewig
