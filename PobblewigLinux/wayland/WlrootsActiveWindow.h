#pragma once

#include "PobblewigLinux/desktop/ActiveWindowProviding.h"
#include "PobblewigLinux/wayland/WaylandConnection.h"

struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_handle_v1_listener;
struct zwlr_foreign_toplevel_manager_v1;
struct zwlr_foreign_toplevel_manager_v1_listener;

namespace pobblewig {

/// The active window of a compositor that publishes its list of windows, such as those based on
/// wlroots. Updates arrive by themselves, so a query is free.
class WlrootsActiveWindow : public ActiveWindowProviding {
public:
    static bool isOffered(const WaylandConnection& connection);

    /// The compositor must offer it.
    explicit WlrootsActiveWindow(WaylandConnection& connection);

    std::optional<WindowIdentity> activeWindow() override;

private:
    using Handle = zwlr_foreign_toplevel_handle_v1;

    struct Window {
        WaylandProxy<Handle> handle;
        QString applicationID = {};
        bool isActive = false;
    };

    static const zwlr_foreign_toplevel_manager_v1_listener managerListener;
    static const zwlr_foreign_toplevel_handle_v1_listener windowListener;
    static Window& window(void* self, Handle* handle);

    WaylandConnection& m_connection;
    std::map<Handle*, Window> m_windows;
    WaylandProxy<zwlr_foreign_toplevel_manager_v1> m_manager;
};

} // namespace pobblewig
