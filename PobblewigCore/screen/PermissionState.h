#pragma once

namespace pobblewig {

/// The user's answer to a permission prompt.
enum class PermissionState { notRequested, granted, denied };

} // namespace pobblewig
