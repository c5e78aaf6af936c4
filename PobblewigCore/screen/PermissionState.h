#pragma once

namespace pobblewig {

/// What the user has said to a question of the system's.
enum class PermissionState { notRequested, granted, denied };

} // namespace pobblewig
