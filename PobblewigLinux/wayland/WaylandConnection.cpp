#include "PobblewigLinux/wayland/WaylandConnection.h"

#include <QSocketNotifier>

namespace pobblewig {

namespace {

using Offers = std::map<std::string, std::uint32_t>;

constexpr wl_registry_listener listener {
    .global = [](void* offers, wl_registry*, std::uint32_t name, const char* interface,
                  std::uint32_t) { static_cast<Offers*>(offers)->emplace(interface, name); },
    .global_remove = [](void*, wl_registry*, std::uint32_t) {},
};

/// Does not block. Returns false once the compositor is gone.
bool readEvents(wl_display* display)
{
    while (wl_display_prepare_read(display) != 0) {
        if (wl_display_dispatch_pending(display) < 0)
            return false;
    }
    if (wl_display_read_events(display) < 0 || wl_display_dispatch_pending(display) < 0)
        return false;
    wl_display_flush(display);
    return true;
}

} // namespace

std::unique_ptr<WaylandConnection> WaylandConnection::open(const QByteArray& name)
{
    Display display(wl_display_connect(name.isEmpty() ? nullptr : name.constData()));
    if (!display)
        return nullptr;
    return std::unique_ptr<WaylandConnection>(new WaylandConnection(std::move(display)));
}

WaylandConnection::WaylandConnection(Display display)
    : m_display(std::move(display))
    , m_registry(wl_display_get_registry(m_display.get()))
    , m_notifier(std::make_unique<QSocketNotifier>(
          wl_display_get_fd(m_display.get()), QSocketNotifier::Read))
{
    wl_registry_add_listener(m_registry.get(), &listener, &m_offers);
    wl_display_roundtrip(m_display.get());
    QObject::connect(
        m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { receive(); });
}

WaylandConnection::~WaylandConnection() = default;

bool WaylandConnection::offers(const wl_interface& interface) const
{
    return m_offers.contains(interface.name);
}

void* WaylandConnection::bindFirst(const wl_interface& interface)
{
    const auto offer = m_offers.find(interface.name);
    if (offer == m_offers.end())
        return nullptr;
    return wl_registry_bind(m_registry.get(), offer->second, &interface, 1);
}

void WaylandConnection::receive()
{
    if (!readEvents(m_display.get()))
        m_notifier->setEnabled(false);
}

} // namespace pobblewig
