#include "prompts/PlatformWording.h"

namespace pobblewig {

const PlatformWording PlatformWording::macOS {
    .identity = u"You are the user's wiggling, a private personal companion living on their Mac.",
    .calendarEvents = u"Upcoming calendar events, synced from macOS Calendar.",
    .calendarReminders = u"Incomplete reminders, synced from macOS Reminders.",
    .screenCaptureDenied = u"Screen Recording permission is not granted. Enable it in System "
                           u"Settings > Privacy & Security > Screen Recording.",
    .screenPermissionNeeded =
        u"Screen Recording permission is needed. macOS should have shown a prompt — grant "
        u"Pobblewig access in System Settings > Privacy & Security > Screen Recording, then press "
        u"the button again.",
    .screenPermissionAdvice =
        u"On a permission error, tell the user to enable System Settings → Privacy & Security → "
        u"Screen Recording → Pobblewig and ask again.",
};

const PlatformWording PlatformWording::linuxDesktop {
    .identity =
        u"You are the user's wiggling, a private personal companion living on their desktop.",
    .calendarEvents = u"Upcoming calendar events, synced from the desktop's calendar.",
    .calendarReminders = u"Incomplete reminders, synced from the desktop's task list.",
    .screenCaptureDenied = u"Permission to take screenshots is not granted. Allow it when the "
                           u"desktop asks, or in the desktop's privacy settings.",
    .screenPermissionNeeded =
        u"Permission to take screenshots is needed. The desktop should have asked — allow "
        u"Pobblewig to take screenshots, there or in the desktop's privacy settings, then press "
        u"the button again.",
    .screenPermissionAdvice =
        u"On a permission error, tell the user to allow Pobblewig to take screenshots when the "
        u"desktop asks, or in the desktop's privacy settings, and ask again.",
};

} // namespace pobblewig
