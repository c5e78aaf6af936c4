#pragma once

#include <QStringView>

namespace pobblewig {

/// The texts that name the platform, one row for each.
struct PlatformWording {
    /// The first sentence that the model reads about itself.
    QStringView identity;

    /// What belongs into the reference sections that are read from the platform.
    QStringView calendarEvents;
    QStringView calendarReminders;

    static const PlatformWording macOS;
    static const PlatformWording linuxDesktop;
};

} // namespace pobblewig
