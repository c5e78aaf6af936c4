#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace pobblewig {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

/// A reply of the X server, or null if the window has gone in the meantime.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, FreeReply>;

/// A connection to the X server, with queries that several classes need. Once the server is gone,
/// no replies arrive.
class X11Connection {
public:
    /// Qt's own connection, which lives as long as the application object. Null if Qt does not run
    /// on X11.
    static std::unique_ptr<X11Connection> create();

    /// A separate connection. Null if there is no such server.
    static std::unique_ptr<X11Connection> open(const std::string& display);

    xcb_connection_t* get() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    /// Queried from the server once for each name.
    xcb_atom_t atom(const std::string& name);

    /// A property that is a list of windows, atoms or numbers; empty if it does not exist.
    std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);

    /// The same in two steps, so that several replies take the time of one. Every `ask` needs its
    /// `values`.
    xcb_get_property_cookie_t ask(xcb_window_t window, const std::string& property);
    std::vector<std::uint32_t> values(xcb_get_property_cookie_t question) const;

    /// Whether a program owns the selection, by which desktops announce their services.
    bool isOwned(xcb_atom_t selection) const;

    /// Replaces a property that is a list of atoms or numbers.
    void setValues(xcb_window_t window, const std::string& property, xcb_atom_t type,
        const std::vector<std::uint32_t>& values);

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    using OwnConnection = std::unique_ptr<xcb_connection_t, Disconnect>;

    explicit X11Connection(xcb_connection_t* connection);

    /// Null if the connection is Qt's.
    OwnConnection m_own;
    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    std::map<std::string, xcb_atom_t> m_atoms;
};

} // namespace pobblewig
