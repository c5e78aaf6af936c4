#pragma once

#include <QByteArray>

#include <wayland-client.h>

#include <map>
#include <memory>
#include <string>

class QSocketNotifier;

namespace pobblewig {

struct DestroyProxy {
    void operator()(void* proxy) const { wl_proxy_destroy(static_cast<wl_proxy*>(proxy)); }
};

/// An object of the compositor, destroyed with its owner.
template <typename Proxy>
using WaylandProxy = std::unique_ptr<Proxy, DestroyProxy>;

/// A connection to the Wayland compositor in addition to Qt's, used to observe other applications.
/// Its objects must be destroyed before it.
class WaylandConnection {
public:
    /// Returns nothing without a compositor. An empty name is the session's display. Waits until
    /// the compositor has listed what it offers.
    static std::unique_ptr<WaylandConnection> open(const QByteArray& display = {});
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    bool offers(const wl_interface& interface) const;

    /// Returns null if the compositor does not offer it. Always binds version 1 of an interface.
    template <typename Proxy>
    WaylandProxy<Proxy> bind(const wl_interface& interface)
    {
        return WaylandProxy<Proxy>(static_cast<Proxy*>(bindFirst(interface)));
    }

    /// Sends pending requests.
    void flush() { wl_display_flush(m_display.get()); }

    /// Permanently false once the compositor is gone.
    bool isAlive() const { return wl_display_get_error(m_display.get()) == 0; }

private:
    struct Disconnect {
        void operator()(wl_display* display) const { wl_display_disconnect(display); }
    };
    using Display = std::unique_ptr<wl_display, Disconnect>;

    explicit WaylandConnection(Display display);

    void* bindFirst(const wl_interface& interface);
    void receive();

    Display m_display;
    WaylandProxy<wl_registry> m_registry;
    std::map<std::string, std::uint32_t> m_offers;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace pobblewig
