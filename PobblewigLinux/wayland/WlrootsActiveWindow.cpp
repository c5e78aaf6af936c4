#include "PobblewigLinux/wayland/WlrootsActiveWindow.h"

#include <foreign-toplevel-client-header.h>

#include <algorithm>
#include <span>

namespace pobblewig {

namespace {

bool holds(const wl_array& states, std::uint32_t wanted)
{
    const std::span all(
        static_cast<const std::uint32_t*>(states.data), states.size / sizeof(std::uint32_t));
    return std::ranges::count(all, wanted) > 0;
}

} // namespace

const zwlr_foreign_toplevel_manager_v1_listener WlrootsActiveWindow::managerListener {
    .toplevel =
        [](void* self, auto*, Handle* handle) {
            auto& windows = static_cast<WlrootsActiveWindow*>(self)->m_windows;
            windows.emplace(handle, Window { WaylandProxy<Handle>(handle) });
            zwlr_foreign_toplevel_handle_v1_add_listener(handle, &windowListener, self);
        },
    .finished = [](void* self,
                    auto*) { static_cast<WlrootsActiveWindow*>(self)->m_windows.clear(); },
};

const zwlr_foreign_toplevel_handle_v1_listener WlrootsActiveWindow::windowListener {
    .title = [](void*, Handle*, const char*) {},
    .app_id = [](void* self, Handle* handle,
                  const char* id) { window(self, handle).applicationID = QString::fromUtf8(id); },
    .output_enter = [](void*, Handle*, wl_output*) {},
    .output_leave = [](void*, Handle*, wl_output*) {},
    .state =
        [](void* self, Handle* handle, wl_array* states) {
            window(self, handle).isActive =
                holds(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
        },
    .done = [](void*, Handle*) {},
    .closed =
        [](void* self, Handle* handle) {
            auto& windows = static_cast<WlrootsActiveWindow*>(self)->m_windows;
            if (auto closed = windows.extract(handle))
                zwlr_foreign_toplevel_handle_v1_destroy(closed.mapped().handle.release());
        },
};

bool WlrootsActiveWindow::isOffered(const WaylandConnection& connection)
{
    return connection.offers(zwlr_foreign_toplevel_manager_v1_interface);
}

WlrootsActiveWindow::WlrootsActiveWindow(WaylandConnection& connection)
    : m_connection(connection)
    , m_manager(connection.bind<zwlr_foreign_toplevel_manager_v1>(
          zwlr_foreign_toplevel_manager_v1_interface))
{
    zwlr_foreign_toplevel_manager_v1_add_listener(m_manager.get(), &managerListener, this);
    connection.flush();
}

std::optional<WindowIdentity> WlrootsActiveWindow::activeWindow()
{
    if (!m_connection.isAlive())
        return std::nullopt;
    for (const auto& [handle, window] : m_windows) {
        if (window.isActive)
            return WindowIdentity { .windowClass = window.applicationID };
    }
    return std::nullopt;
}

WlrootsActiveWindow::Window& WlrootsActiveWindow::window(void* self, Handle* handle)
{
    return static_cast<WlrootsActiveWindow*>(self)->m_windows[handle];
}

} // namespace pobblewig
