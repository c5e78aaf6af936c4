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

/// An object of the compositor's that is ours to forget.
template <typename Proxy>
using WaylandProxy = std::unique_ptr<Proxy, DestroyProxy>;

/// A connection to the Wayland compositor beside Qt's, for what it tells of other applications.
/// Its objects must be forgotten before it ends.
class WaylandConnection {
public:
    /// Nothing without a compositor. An empty name is that of the session. Waits for the compositor
    /// to say what it offers.
    static std::unique_ptr<WaylandConnection> open(const QByteArray& display = {});
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    bool offers(const wl_interface& interface) const;

    /// Nothing if the compositor does not offer it. Always the first version of an interface.
    template <typename Proxy>
    WaylandProxy<Proxy> bind(const wl_interface& interface)
    {
        return WaylandProxy<Proxy>(static_cast<Proxy*>(bindFirst(interface)));
    }

    /// What was asked goes out.
    void flush() { wl_display_flush(m_display.get()); }

    /// False for ever once the compositor has gone.
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
