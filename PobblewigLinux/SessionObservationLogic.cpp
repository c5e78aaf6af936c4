#include "PobblewigLinux/SessionObservationLogic.h"

namespace pobblewig {

namespace {

ActiveWindowSource activeWindowSource(const SessionOffers& offers)
{
    using enum ActiveWindowSource;
    if (!offers.isWayland)
        return offers.hasX11 ? x11 : none;
    if (offers.hasToplevelList)
        return wlroots;
    return offers.hasKWin ? kwin : none;
}

IdleTimeSource idleTimeSource(const SessionOffers& offers)
{
    using enum IdleTimeSource;
    if (!offers.isWayland)
        return offers.hasX11IdleTime ? x11 : none;
    if (offers.hasIdleNotify)
        return waylandIdleNotify;
    return offers.hasMutterIdle ? mutter : none;
}

QString name(ActiveWindowSource source)
{
    switch (source) {
    case ActiveWindowSource::none:
        break;
    case ActiveWindowSource::x11:
        return QStringLiteral("X11: the window manager's active window");
    case ActiveWindowSource::wlroots:
        return QStringLiteral("Wayland: the compositor's list of windows (foreign-toplevel)");
    case ActiveWindowSource::kwin:
        return QStringLiteral("Wayland: a script in KWin");
    }
    return QStringLiteral("not available");
}

QString name(IdleTimeSource source)
{
    switch (source) {
    case IdleTimeSource::none:
        break;
    case IdleTimeSource::x11:
        return QStringLiteral("X11: the screen saver's counter (MIT-SCREEN-SAVER)");
    case IdleTimeSource::waylandIdleNotify:
        return QStringLiteral("Wayland: ext-idle-notify");
    case IdleTimeSource::mutter:
        return QStringLiteral("GNOME: Mutter's idle monitor");
    }
    return QStringLiteral("not available");
}

QString missingFrontmost(const SessionOffers& offers)
{
    if (!offers.isWayland)
        return QStringLiteral("There is no X11 or Wayland session, so no application is seen.");
    if (offers.hasGNOMEShell) {
        return QStringLiteral("GNOME under Wayland tells which application is in front only to its "
                              "own extensions, so none is seen. A GNOME session on Xorg tells it.");
    }
    return QStringLiteral(
        "This Wayland compositor has neither a list of windows (foreign-toplevel) "
        "nor KWin's scripts, so the application in front is not seen.");
}

} // namespace

ObservationPlan SessionObservationLogic::plan(const SessionOffers& offers)
{
    return { activeWindowSource(offers), idleTimeSource(offers) };
}

ObservationReport SessionObservationLogic::report(const SessionOffers& offers)
{
    const auto [activeWindow, idleTime] = plan(offers);
    ObservationReport report { name(activeWindow), name(idleTime), {} };
    if (activeWindow == ActiveWindowSource::none)
        report.notes += missingFrontmost(offers);
    if (offers.isWayland && offers.hasX11) {
        report.notes += QStringLiteral("XWayland is not asked: it knows only the windows of X11 "
                                       "programs, and would name one that is not in front.");
    }
    if (idleTime == IdleTimeSource::none) {
        report.notes += QStringLiteral("This session does not tell how long nobody has touched "
                                       "the keyboard or the mouse: you count as present.");
    } else if (idleTime != IdleTimeSource::x11) {
        report.notes += QStringLiteral("Pauses of less than 5 seconds are not seen.");
    }
    return report;
}

} // namespace pobblewig
