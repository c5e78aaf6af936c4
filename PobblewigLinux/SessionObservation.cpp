#include "PobblewigLinux/SessionObservation.h"

#include "PobblewigLinux/SessionFrontmostAppProvider.h"
#include "PobblewigLinux/desktop/MutterIdleTime.h"
#include "PobblewigLinux/modules/ModuleLoader.h"
#include "PobblewigLinux/wayland/KWinActiveWindow.h"
#include "PobblewigLinux/x11/X11FrontmostAppProvider.h"
#include "foundation/Log.h"

#include <QDBusConnectionInterface>

namespace pobblewig {

namespace {

bool isWaylandSession(const Environment& environment)
{
    return variable(environment, QStringLiteral("WAYLAND_DISPLAY"))
        || variable(environment, QStringLiteral("XDG_SESSION_TYPE")) == QStringLiteral("wayland");
}

std::unique_ptr<WaylandCompositor> connectToWayland(const Environment& environment)
{
    if (!isWaylandSession(environment))
        return nullptr;
    const auto module = ModuleLoader().load<WaylandConnecting>(QStringLiteral("wayland"));
    if (!module) {
        Log::line(QStringLiteral("buddy: %1").arg(module.error()));
        return nullptr;
    }
    const auto display = variable(environment, QStringLiteral("WAYLAND_DISPLAY"));
    return (*module)->connectTo(display.value_or(QString()).toLocal8Bit());
}

bool hasService(const QDBusConnection& bus, const QString& name)
{
    return bus.isConnected() && bus.interface()->isServiceRegistered(name);
}

SessionOffers offersOfWayland(const WaylandCompositor* wayland, const QDBusConnection& bus)
{
    return {
        .isWayland = true,
        .hasToplevelList = wayland && wayland->hasToplevelList(),
        .hasIdleNotify = wayland && wayland->hasIdleNotify(),
        .hasKWin = hasService(bus, KWinActiveWindow::service),
        .hasGNOMEShell = hasService(bus, QStringLiteral("org.gnome.Shell")),
        .hasMutterIdle = hasService(bus, MutterIdleTime::service),
    };
}

std::unique_ptr<ActiveWindowProviding> makeActiveWindow(
    ActiveWindowSource source, WaylandCompositor* wayland, const QDBusConnection& bus)
{
    if (source == ActiveWindowSource::wlroots)
        return wayland->makeActiveWindow();
    if (source == ActiveWindowSource::kwin)
        return std::make_unique<KWinActiveWindow>(bus);
    return nullptr;
}

std::unique_ptr<IdleTimeProviding> makeIdleTime(
    IdleTimeSource source, WaylandCompositor* wayland, const QDBusConnection& bus, Clock now)
{
    if (source == IdleTimeSource::waylandIdleNotify)
        return wayland->makeIdleTime(std::move(now));
    if (source == IdleTimeSource::mutter)
        return std::make_unique<MutterIdleTime>(bus, std::move(now));
    return nullptr;
}

} // namespace

SessionObservation::SessionObservation(
    X11Connection* x11, const Environment& environment, const QDBusConnection& bus, Clock now)
    : m_isWayland(isWaylandSession(environment))
    , m_names(
          DesktopEntries(DesktopEntries::systemDirectories(), DesktopEntries::systemLanguages()))
    , m_wayland(connectToWayland(environment))
{
    SessionOffers offers;
    if (m_isWayland)
        offers = offersOfWayland(m_wayland.get(), bus);
    offers.hasX11 = x11 != nullptr;
    offers.hasX11IdleTime = x11 && X11FrontmostAppProvider::tellsIdleTime(*x11);
    m_report = SessionObservationLogic::report(offers);

    const auto [activeWindow, idleTime] = SessionObservationLogic::plan(offers);
    if (activeWindow == ActiveWindowSource::x11) {
        m_provider = std::make_unique<X11FrontmostAppProvider>(*x11, m_names);
        return;
    }
    m_provider = std::make_unique<SessionFrontmostAppProvider>(
        makeActiveWindow(activeWindow, m_wayland.get(), bus),
        makeIdleTime(idleTime, m_wayland.get(), bus, std::move(now)), m_names);
}

} // namespace pobblewig
