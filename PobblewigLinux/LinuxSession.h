#pragma once

#include "PobblewigLinux/SessionObservation.h"
#include "PobblewigLinux/SessionOccupation.h"
#include "PobblewigLinux/SessionPermissions.h"
#include "presence/HotKeyProviding.h"
#include "presence/WindowActivating.h"
#include "screen/ScreenCapturing.h"

#include <set>

namespace pobblewig {

/// What the user's session can observe and permits. The only place that knows both X11 and Wayland.
class LinuxSession {
public:
    /// `x11` may be null; otherwise it must outlive this object.
    LinuxSession(X11Connection* x11, const Environment& environment,
        const QDBusConnection& bus = QDBusConnection::sessionBus());

    FrontmostAppProviding& frontmostProvider() { return m_observation.provider(); }
    const ObservationReport& observation() const { return m_observation.report(); }
    PermissionProviding& permissions() { return m_permissions; }

    /// Null if there is no screen to capture.
    ScreenCapturing* capturer() { return m_capturer.get(); }

    HotKeyProviding& hotKeys() { return *m_hotKeys; }
    WindowActivating& windows() { return *m_windows; }
    OccupationProviding& occupation() { return m_occupation; }

    /// The password managers of this platform.
    static std::vector<QString> alwaysExcluded();

private:
    std::unique_ptr<ScreenCapturing> makeCapturer(X11Connection* x11, const QDBusConnection& bus);
    std::unique_ptr<HotKeyProviding> makeHotKeys(X11Connection* x11, const QDBusConnection& bus);

    SessionObservation m_observation;
    SessionPermissions m_permissions;
    std::unique_ptr<ScreenCapturing> m_capturer;
    std::unique_ptr<HotKeyProviding> m_hotKeys;
    std::unique_ptr<WindowActivating> m_windows;
    SessionOccupation m_occupation;
};

} // namespace pobblewig
