#pragma once

#include "PobblewigLinux/desktop/ActiveWindowProviding.h"
#include "PobblewigLinux/desktop/IdleTimeProviding.h"
#include "foundation/Time.h"

#include <QtPlugin>

#include <memory>

namespace pobblewig {

/// What a Wayland compositor tells of other applications, by a connection beside Qt's.
///
/// Only what it has may be made, and must end before this.
class WaylandCompositor {
public:
    virtual ~WaylandCompositor() = default;

    virtual bool hasToplevelList() const = 0;
    virtual bool hasIdleNotify() const = 0;

    virtual std::unique_ptr<ActiveWindowProviding> makeActiveWindow() = 0;
    virtual std::unique_ptr<IdleTimeProviding> makeIdleTime(Clock now) = 0;
};

/// What the module "wayland" is for.
class WaylandConnecting {
public:
    virtual ~WaylandConnecting() = default;

    /// Nothing without a compositor. An empty name is that of the session.
    virtual std::unique_ptr<WaylandCompositor> connectTo(const QByteArray& display) = 0;
};

} // namespace pobblewig

Q_DECLARE_INTERFACE(pobblewig::WaylandConnecting, "com.pobblewig.WaylandConnecting")
