#pragma once

#include <QTemporaryDir>

#include <ext-idle-notify-server-header.h>
#include <foreign-toplevel-server-header.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <functional>
#include <semaphore>
#include <thread>

namespace pobblewig {

/// A compositor that shows nothing and tells what it is told to, for one client. It runs on a
/// thread of its own, since clients wait for it.
class FakeCompositor {
public:
    FakeCompositor()
    {
        wl_display_add_socket(m_display, socket().constData());
        for (const auto* interface : { &zwlr_foreign_toplevel_manager_v1_interface,
                 &ext_idle_notifier_v1_interface, &wl_seat_interface })
            wl_global_create(m_display, interface, 1, this, bind(interface));
        m_jobs = wl_event_loop_add_fd(
            wl_display_get_event_loop(m_display), m_wakeUp, WL_EVENT_READABLE, runJob, this);
        m_thread = std::thread([this] { wl_display_run(m_display); });
    }

    ~FakeCompositor()
    {
        run([this] { wl_display_terminate(m_display); });
        m_thread.join();
        wl_event_source_remove(m_jobs);
        wl_display_destroy_clients(m_display);
        wl_display_destroy(m_display);
        close(m_wakeUp);
    }
    Q_DISABLE_COPY_MOVE(FakeCompositor)

    QByteArray socket() const { return m_scratch.filePath(QStringLiteral("socket")).toUtf8(); }

    /// Whether the client has asked for everything.
    bool isAsked()
    {
        bool isAsked = false;
        run([&] { isAsked = m_manager && m_notification; });
        return isAsked;
    }

    /// The number of the new window.
    std::size_t openWindow(const char* applicationID)
    {
        run([=, this] {
            auto* window = wl_resource_create(wl_resource_get_client(m_manager),
                &zwlr_foreign_toplevel_handle_v1_interface, 1, 0);
            wl_resource_set_implementation(window, &windowRequests, nullptr, nullptr);
            zwlr_foreign_toplevel_manager_v1_send_toplevel(m_manager, window);
            zwlr_foreign_toplevel_handle_v1_send_app_id(window, applicationID);
            m_windows.push_back(window);
        });
        return m_windows.size() - 1;
    }

    void setActive(std::size_t window, bool isActive)
    {
        run([=, this] {
            auto active = std::uint32_t(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
            wl_array states { .size = isActive ? sizeof active : 0, .alloc = 0, .data = &active };
            zwlr_foreign_toplevel_handle_v1_send_state(m_windows[window], &states);
            zwlr_foreign_toplevel_handle_v1_send_done(m_windows[window]);
        });
    }

    void closeWindow(std::size_t window)
    {
        run([=, this] { zwlr_foreign_toplevel_handle_v1_send_closed(m_windows[window]); });
    }

    void becomeIdle()
    {
        run([this] { ext_idle_notification_v1_send_idled(m_notification); });
    }

    void resume()
    {
        run([this] { ext_idle_notification_v1_send_resumed(m_notification); });
    }

private:
    static void destroy(wl_client*, wl_resource* resource) { wl_resource_destroy(resource); }

    static void getIdleNotification(
        wl_client* client, wl_resource* notifier, std::uint32_t id, std::uint32_t, wl_resource*)
    {
        auto* self = static_cast<FakeCompositor*>(wl_resource_get_user_data(notifier));
        auto* notification =
            wl_resource_create(client, &ext_idle_notification_v1_interface, 1, int(id));
        wl_resource_set_implementation(notification, &notificationRequests, nullptr, nullptr);
        self->m_notification = notification;
    }

    static constexpr struct zwlr_foreign_toplevel_handle_v1_interface windowRequests {
        .set_maximized = {}, .unset_maximized = {}, .set_minimized = {}, .unset_minimized = {},
        .activate = {}, .close = {}, .set_rectangle = {}, .destroy = destroy
    };
    static constexpr struct ext_idle_notification_v1_interface notificationRequests {
        .destroy = destroy
    };
    static constexpr struct ext_idle_notifier_v1_interface notifierRequests {
        .destroy = destroy, .get_idle_notification = getIdleNotification,
    };

    static wl_global_bind_func_t bind(const wl_interface* interface)
    {
        if (interface == &zwlr_foreign_toplevel_manager_v1_interface) {
            return [](wl_client* client, void* self, std::uint32_t, std::uint32_t id) {
                static_cast<FakeCompositor*>(self)->m_manager = wl_resource_create(
                    client, &zwlr_foreign_toplevel_manager_v1_interface, 1, int(id));
            };
        }
        if (interface == &wl_seat_interface) {
            return [](wl_client* client, void*, std::uint32_t, std::uint32_t id) {
                wl_resource_create(client, &wl_seat_interface, 1, id);
            };
        }
        return [](wl_client* client, void* self, std::uint32_t, std::uint32_t id) {
            auto* notifier = wl_resource_create(client, &ext_idle_notifier_v1_interface, 1, id);
            wl_resource_set_implementation(notifier, &notifierRequests, self, nullptr);
        };
    }

    /// On the compositor's thread; returns once it is done.
    void run(std::function<void()> job)
    {
        m_job = std::move(job);
        eventfd_write(m_wakeUp, 1);
        m_done.acquire();
    }

    static int runJob(int wakeUp, std::uint32_t, void* self)
    {
        eventfd_t count = 0;
        eventfd_read(wakeUp, &count);
        static_cast<FakeCompositor*>(self)->m_job();
        wl_display_flush_clients(static_cast<FakeCompositor*>(self)->m_display);
        static_cast<FakeCompositor*>(self)->m_done.release();
        return 0;
    }

    QTemporaryDir m_scratch;
    wl_display* m_display = wl_display_create();
    wl_resource* m_manager = nullptr;
    wl_resource* m_notification = nullptr;
    std::vector<wl_resource*> m_windows;
    int m_wakeUp = eventfd(0, EFD_CLOEXEC);
    wl_event_source* m_jobs = nullptr;
    std::function<void()> m_job;
    std::binary_semaphore m_done { 0 };
    std::thread m_thread;
};

} // namespace pobblewig
