#pragma once

#include "foundation/Task.h"

namespace pobblewig {

/// What the user's session permits the program to do.
class PermissionProviding {
public:
    virtual ~PermissionProviding() = default;

    /// Does not prompt the user.
    virtual bool screenCaptureGranted() = 0;

    /// Shows the system's prompt, if the session has one. Returns whether capture is possible now.
    virtual Task<bool> requestScreenCapture() = 0;
    virtual bool accessibilityGranted() = 0;

    /// Opens the system's own settings page, if there is one.
    virtual void openScreenCaptureSettings() = 0;
};

} // namespace pobblewig
