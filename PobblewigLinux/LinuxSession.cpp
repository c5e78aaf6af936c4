#include "PobblewigLinux/LinuxSession.h"

#include "PobblewigLinux/desktop/ApplicationIdentifiers.h"
#include "PobblewigLinux/portal/PortalHotKeys.h"
#include "PobblewigLinux/portal/PortalScreenCapture.h"
#include "PobblewigLinux/x11/X11HotKeys.h"
#include "PobblewigLinux/x11/X11ScreenCapture.h"
#include "PobblewigLinux/x11/X11WindowActivation.h"
#include "PobblewigLinux/x11/X11WindowIdentity.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

SessionPermissions::Session kind(const SessionObservation& observation)
{
    return observation.isWayland() ? SessionPermissions::Session::wayland
                                   : SessionPermissions::Session::x11;
}

std::unique_ptr<WindowActivating> windowActivation(X11Connection* x11)
{
    if (!x11)
        return std::make_unique<UnavailableWindowActivation>();
    return std::make_unique<X11WindowActivation>(*x11);
}

} // namespace

LinuxSession::LinuxSession(
    X11Connection* x11, const Environment& environment, const QDBusConnection& bus)
    : m_observation(x11, environment, bus)
    , m_permissions(kind(m_observation), bus)
    , m_capturer(makeCapturer(x11, bus))
    , m_hotKeys(makeHotKeys(x11, bus))
    , m_windows(windowActivation(x11))
    , m_occupation(x11, m_observation.provider(), bus)
{
}

std::vector<QString> LinuxSession::alwaysExcluded()
{
    std::vector<QString> identifiers;
    for (const auto identifier : ApplicationIdentifiers::alwaysExcluded())
        identifiers.push_back(identifier.toString());
    return identifiers;
}

std::unique_ptr<ScreenCapturing> LinuxSession::makeCapturer(
    X11Connection* x11, const QDBusConnection& bus)
{
    const auto excluded = alwaysExcluded();
    std::set<QString> never(excluded.begin(), excluded.end());
    if (m_observation.isWayland())
        return std::make_unique<PortalScreenCapture>(bus, frontmostProvider(), std::move(never));
    if (!x11)
        return nullptr;
    const auto appOfWindow = [this, x11](xcb_window_t window) {
        const auto windows = std::span(&window, 1);
        return m_observation.names().application(
            X11WindowIdentity::identities(*x11, windows).front());
    };
    return std::make_unique<X11ScreenCapture>(*x11, appOfWindow, std::move(never));
}

std::unique_ptr<HotKeyProviding> LinuxSession::makeHotKeys(
    X11Connection* x11, const QDBusConnection& bus)
{
    // On Wayland an X server has the keyboard only while one of its own windows has the focus.
    if (m_observation.isWayland())
        return std::make_unique<PortalHotKeys>(
            bus, QCoreApplication::translate("LinuxSession", "Show or hide the chat"));
    if (auto hotKeys = x11 ? X11HotKeys::create() : nullptr)
        return hotKeys;
    return std::make_unique<UnavailableHotKeys>();
}

} // namespace pobblewig
