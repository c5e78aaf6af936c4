#pragma once

namespace pobblewig {

/// The time since the last input, from a source that reports nothing else.
class IdleTimeProviding {
public:
    virtual ~IdleTimeProviding() = default;

    virtual double idleSeconds() = 0;
};

} // namespace pobblewig
