#pragma once

#include <QStringView>

namespace pobblewig {

/// The texts that name the platform, one row for each.
struct PlatformWording {
    /// The first sentence that the model reads about itself.
    QStringView identity;

    static const PlatformWording macOS;
    static const PlatformWording linuxDesktop;
};

} // namespace pobblewig
