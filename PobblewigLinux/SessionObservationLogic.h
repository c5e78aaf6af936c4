#pragma once

#include "activity/ObservationReport.h"

namespace pobblewig {

/// The sources in a session that report on other applications.
struct SessionOffers {
    bool isWayland = false;
    bool hasX11 = false;
    bool hasX11IdleTime = false;
    bool hasToplevelList = false;
    bool hasIdleNotify = false;
    bool hasKWin = false;
    bool hasGNOMEShell = false;
    bool hasMutterIdle = false;
};

enum class ActiveWindowSource { none, x11, wlroots, kwin };
enum class IdleTimeSource { none, x11, waylandIdleNotify, mutter };

struct ObservationPlan {
    ActiveWindowSource activeWindow = ActiveWindowSource::none;
    IdleTimeSource idleTime = IdleTimeSource::none;

    bool operator==(const ObservationPlan&) const = default;
};

namespace SessionObservationLogic {

/// Never uses the X server under Wayland, since it sees only some programs' windows and would
/// report one that is not in front.
ObservationPlan plan(const SessionOffers& offers);

ObservationReport report(const SessionOffers& offers);

} // namespace SessionObservationLogic

} // namespace pobblewig
