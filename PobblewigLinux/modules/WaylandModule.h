#pragma once

#include "PobblewigLinux/wayland/WaylandCompositor.h"

#include <QObject>

namespace pobblewig {

/// A session on X11 has no use for the Wayland libraries.
class WaylandModule final : public QObject, public WaylandConnecting {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.pobblewig.WaylandConnecting")
    Q_INTERFACES(pobblewig::WaylandConnecting)

public:
    std::unique_ptr<WaylandCompositor> connectTo(const QByteArray& display) override;
};

} // namespace pobblewig
