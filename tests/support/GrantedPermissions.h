#pragma once

#include "screen/PermissionProviding.h"

namespace pobblewig {

/// A session that permits everything and counts how often it was asked.
struct GrantedPermissions : PermissionProviding {
    int requests = 0;

    bool screenCaptureGranted() override { return true; }
    Task<bool> requestScreenCapture() override
    {
        ++requests;
        co_return true;
    }
    bool accessibilityGranted() override { return true; }
    void openScreenCaptureSettings() override { }
};

} // namespace pobblewig
