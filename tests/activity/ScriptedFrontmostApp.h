#pragma once

#include "activity/FrontmostAppProviding.h"

namespace pobblewig {

/// Whatever the test puts in front.
class ScriptedFrontmostApp : public FrontmostAppProviding {
public:
    std::optional<FrontmostApp> front;
    double idle = 0;
    int timesAsked = 0;

    void show(const QString& name, const QString& bundleIdentifier)
    {
        front = FrontmostApp { name, bundleIdentifier };
    }

    std::optional<FrontmostApp> frontmostApp() override
    {
        ++timesAsked;
        return front;
    }
    double idleSeconds() override { return idle; }
};

} // namespace pobblewig
