#pragma once

#include "foundation/FileOperations.h"

namespace pobblewig {

/// Switches whether the program starts at login.
class AutostartSwitching {
public:
    virtual ~AutostartSwitching() = default;

    /// Asked anew each time, as the desktop's own settings change it too.
    virtual bool isEnabled() const = 0;

    virtual tl::expected<void, FileError> setEnabled(bool isEnabled) = 0;
};

} // namespace pobblewig
