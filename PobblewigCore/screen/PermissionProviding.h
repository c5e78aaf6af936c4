#pragma once

#include "foundation/Task.h"

namespace pobblewig {

/// What the user's session lets the program do.
class PermissionProviding {
public:
    virtual ~PermissionProviding() = default;

    /// Asks nobody.
    virtual bool screenCaptureGranted() = 0;

    /// Shows the system's question, if the session has one. Whether capture is possible now.
    virtual Task<bool> requestScreenCapture() = 0;
    virtual bool accessibilityGranted() = 0;

    /// Opens the system's own page for it, where there is one.
    virtual void openScreenCaptureSettings() = 0;
};

} // namespace pobblewig
