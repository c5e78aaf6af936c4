#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>

namespace pobblewig {

struct DemoOptions {
    std::chrono::milliseconds delayBetweenWords {};
    /// Refuses requests that offer tools, as servers do that know none.
    bool refusesTools = false;
    /// What it takes for the present, in the user's zone.
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); };
};

} // namespace pobblewig
