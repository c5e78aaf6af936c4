#pragma once

#include <QtPlugin>

namespace pobblewig {

/// What the module "greeting" is for, which stands in for all others.
class Greeting {
public:
    virtual ~Greeting() = default;

    /// How often the same object has greeted.
    virtual int greet() = 0;
};

} // namespace pobblewig

Q_DECLARE_INTERFACE(pobblewig::Greeting, "com.pobblewig.Greeting")
