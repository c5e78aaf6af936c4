#pragma once

#include <QSize>

namespace pobblewig {

/// How far the screen reaches from between the buddy's feet, in device pixels.
struct BuddyReach {
    static constexpr int endless = 1 << 20;

    int left = endless;
    int right = endless;
    int above = endless;

    bool operator==(const BuddyReach&) const = default;
};

/// What a badge takes, in device pixels, and where it can be seen.
struct BuddyPill {
    QSize size;
    BuddyReach reach = {};

    /// How far it moves out of the middle to stay on the screen, but never off the buddy.
    int shift() const;
};

} // namespace pobblewig
