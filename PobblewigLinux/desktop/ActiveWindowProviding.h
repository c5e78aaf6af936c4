#pragma once

#include "PobblewigLinux/desktop/WindowIdentity.h"

#include <optional>

namespace pobblewig {

/// The window with the user's attention, from a source that reports nothing else.
class ActiveWindowProviding {
public:
    virtual ~ActiveWindowProviding() = default;

    virtual std::optional<WindowIdentity> activeWindow() = 0;
};

} // namespace pobblewig
