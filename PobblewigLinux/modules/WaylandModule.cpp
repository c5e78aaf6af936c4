#include "PobblewigLinux/modules/WaylandModule.h"

#include "PobblewigLinux/wayland/WaylandIdleTime.h"
#include "PobblewigLinux/wayland/WlrootsActiveWindow.h"

namespace pobblewig {

namespace {

class ConnectedCompositor final : public WaylandCompositor {
public:
    explicit ConnectedCompositor(std::unique_ptr<WaylandConnection> connection)
        : m_connection(std::move(connection))
    {
    }

    bool hasToplevelList() const override { return WlrootsActiveWindow::isOffered(*m_connection); }
    bool hasIdleNotify() const override { return WaylandIdleTime::isOffered(*m_connection); }

    std::unique_ptr<ActiveWindowProviding> makeActiveWindow() override
    {
        return std::make_unique<WlrootsActiveWindow>(*m_connection);
    }
    std::unique_ptr<IdleTimeProviding> makeIdleTime(Clock now) override
    {
        return std::make_unique<WaylandIdleTime>(*m_connection, std::move(now));
    }

private:
    std::unique_ptr<WaylandConnection> m_connection;
};

} // namespace

std::unique_ptr<WaylandCompositor> WaylandModule::connectTo(const QByteArray& display)
{
    if (auto connection = WaylandConnection::open(display))
        return std::make_unique<ConnectedCompositor>(std::move(connection));
    return nullptr;
}

} // namespace pobblewig
