#pragma once

#include "foundation/Task.h"

namespace pobblewig {

/// What the user must not be disturbed at.
enum class Occupation { none, fullScreen, call };

/// Tells what the user is occupied with. Asked before each message.
class OccupationProviding {
public:
    virtual ~OccupationProviding() = default;

    /// What cannot be found out counts as none.
    virtual Task<Occupation> occupation() = 0;
};

} // namespace pobblewig
