#pragma once

#include "presence/AutostartSwitching.h"
#include "presence/HotKeyProviding.h"
#include "presence/NotificationPresenting.h"
#include "presence/SoundPlaying.h"
#include "presence/WindowActivating.h"

namespace pobblewig {

/// The services of the desktop. All of them outlive their users.
struct DesktopServices {
    HotKeyProviding& hotKeys;
    NotificationPresenting& notifications;
    SoundPlaying& sounds;
    AutostartSwitching& autostart;
    WindowActivating& windows;
};

} // namespace pobblewig
