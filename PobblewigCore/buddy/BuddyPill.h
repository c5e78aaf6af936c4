#pragma once

#include <QSize>

namespace pobblewig {

/// How far the screen extends from the point between the buddy's feet, in device pixels.
struct BuddyReach {
    static constexpr int endless = 1 << 20;

    int left = endless;
    int right = endless;
    int above = endless;

    bool operator==(const BuddyReach&) const = default;
};

/// The size of a badge in device pixels, and the area where it can be seen.
struct BuddyPill {
    QSize size;
    BuddyReach reach = {};

    /// Returns how far it moves out of the middle to stay on the screen, but never off the buddy.
    int shift() const;
};

} // namespace pobblewig
