#pragma once

#include <QStringView>

namespace pobblewig {

/// The texts that name the platform, one row for each.
struct PlatformWording {
    /// The first sentence that the model reads about itself.
    QStringView identity;

    /// What belongs in the reference sections that are read from the platform.
    QStringView calendarEvents;
    QStringView calendarReminders;

    /// Why there is no picture of the screen, for both the user and the model.
    QStringView screenCaptureDenied;

    /// The same, with what the user can do before trying again.
    QStringView screenPermissionNeeded;

    /// What the model tells the user after `screenCaptureDenied`.
    QStringView screenPermissionAdvice;

    static const PlatformWording macOS;
    static const PlatformWording linuxDesktop;
};

} // namespace pobblewig
