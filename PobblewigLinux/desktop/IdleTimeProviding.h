#pragma once

namespace pobblewig {

/// How long nobody has touched a thing, from a source that tells nothing else.
class IdleTimeProviding {
public:
    virtual ~IdleTimeProviding() = default;

    virtual double idleSeconds() = 0;
};

} // namespace pobblewig
