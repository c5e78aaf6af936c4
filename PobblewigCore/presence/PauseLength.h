#pragma once

namespace pobblewig {

/// How long the user lets observation rest.
enum class PauseLength { halfAnHour, untilTomorrow, untilResumed };

} // namespace pobblewig
