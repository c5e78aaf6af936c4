#pragma once

#include <chrono>

namespace pobblewig {

struct DemoOptions {
    std::chrono::milliseconds delayBetweenWords {};
    /// Refuses requests that offer tools, as servers do that know none.
    bool refusesTools = false;
};

} // namespace pobblewig
