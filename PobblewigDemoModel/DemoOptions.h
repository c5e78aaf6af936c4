#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>

namespace pobblewig {

struct DemoOptions {
    std::chrono::milliseconds delayBetweenWords {};
    /// How long a client may be silent before its connection is closed.
    std::chrono::milliseconds patience = std::chrono::seconds(60);
    /// Refuses requests that offer tools, as servers without tool support do.
    bool refusesTools = false;
    /// The current time in the user's zone.
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); };
};

} // namespace pobblewig
