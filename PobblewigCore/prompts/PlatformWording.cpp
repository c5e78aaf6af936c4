#include "prompts/PlatformWording.h"

namespace pobblewig {

const PlatformWording PlatformWording::macOS {
    .identity = u"You are the user's wiggling, a private personal companion living on their Mac.",
    .calendarEvents = u"Upcoming calendar events, synced from macOS Calendar.",
    .calendarReminders = u"Incomplete reminders, synced from macOS Reminders.",
};

const PlatformWording PlatformWording::linuxDesktop {
    .identity =
        u"You are the user's wiggling, a private personal companion living on their desktop.",
    .calendarEvents = u"Upcoming calendar events, synced from the desktop's calendar.",
    .calendarReminders = u"Incomplete reminders, synced from the desktop's task list.",
};

} // namespace pobblewig
