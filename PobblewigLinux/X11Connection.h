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

/// Qt's own connection to the X server, with the questions that everyone here asks.
class X11Connection {
public:
    /// Nothing if Qt does not run on X11. The connection lives as long as the application object.
    static std::unique_ptr<X11Connection> create();

    xcb_connection_t* get() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    /// Asked of the server once for each name.
    xcb_atom_t atom(const std::string& name);

    /// A property that is a list of windows, atoms or numbers; empty if there is none.
    std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);

    /// Whether some program has the selection, which is how desktops announce their services.
    bool isOwned(xcb_atom_t selection) const;

    /// Replaces a property that is a list of atoms or numbers.
    void setValues(xcb_window_t window, const std::string& property, xcb_atom_t type,
        const std::vector<std::uint32_t>& values);

private:
    X11Connection(xcb_connection_t* connection, xcb_window_t root);

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    std::map<std::string, xcb_atom_t> m_atoms;
};

} // namespace pobblewig
