#pragma once

#include "presence/AutostartSwitching.h"
#include "presence/HotKeyProviding.h"
#include "presence/NotificationPresenting.h"
#include "presence/SoundPlaying.h"
#include "presence/WindowActivating.h"

namespace pobblewig {

/// What the desktop does for the program. All of it outlives whoever uses it.
struct DesktopServices {
    HotKeyProviding& hotKeys;
    NotificationPresenting& notifications;
    SoundPlaying& sounds;
    AutostartSwitching& autostart;
    WindowActivating& windows;
};

} // namespace pobblewig
