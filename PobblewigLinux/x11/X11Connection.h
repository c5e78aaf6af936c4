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

/// An answer of the X server. Nothing if the window in question has gone meanwhile.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, FreeReply>;

/// A connection to the X server, with the questions that everyone here asks. When the server goes
/// away there are no answers any more.
class X11Connection {
public:
    /// Qt's own, which lives as long as the application object. Nothing if Qt does not run on X11.
    static std::unique_ptr<X11Connection> create();

    /// One beside Qt's. Nothing if there is no such server.
    static std::unique_ptr<X11Connection> open(const std::string& display);

    xcb_connection_t* get() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    /// Asked of the server once for each name.
    xcb_atom_t atom(const std::string& name);

    /// A property that is a list of windows, atoms or numbers; empty if there is none.
    std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);

    /// The same in two steps, so that several answers cost the time of one. Each question has to be
    /// followed by its answer.
    xcb_get_property_cookie_t ask(xcb_window_t window, const std::string& property);
    std::vector<std::uint32_t> values(xcb_get_property_cookie_t question) const;

    /// Whether some program has the selection, which is how desktops announce their services.
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

    /// Nothing if the connection is Qt's.
    OwnConnection m_own;
    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    std::map<std::string, xcb_atom_t> m_atoms;
};

} // namespace pobblewig
