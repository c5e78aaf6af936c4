#pragma once

#include "buddy/BuddyHearts.h"
#include "buddy/BuddyMemes.h"
#include "buddy/BuddyPose.h"
#include "buddy/BuddySnore.h"
#include "mascots/MascotSprite.h"

namespace pobblewig {

/// A sign beside the buddy, with a few words.
struct BuddyBadge {
    enum class Mark { reminder, done };

    Mark mark = Mark::reminder;
    QString label;
    /// From 0 to 1, as it comes and goes.
    double opacity = 0;
};

/// How many dots the claws are raised.
struct BuddyClaws {
    int left = 0;
    int right = 0;

    bool operator==(const BuddyClaws&) const = default;
};

/// Everything that is visible of the buddy at a moment, independent of size, screen and colours.
struct BuddyFrame {
    struct Heart {
        /// From -1 (over the left edge of the body) to 1.
        double x = 0;
        /// From 0 (just born) to 1 (gone).
        double age = 0;
        bool isLarge = false;
    };

    /// Seconds since the buddy's first appearance.
    double time = 0;
    BuddyPose pose;
    /// The key of the bitmap; the name of the sprite is left empty.
    BitmapKey look;
    BuddyClaws claws;
    QVarLengthArray<Heart, BuddyHearts::atOnce> hearts;
    double sleepAmount = 0;
    BuddySnore::Letters letters {};
    /// The strength of the rain, from 0 to 1.
    double rain = 0;
    std::optional<BuddyBadge> badge;
    /// Shown in place of the body.
    std::optional<BuddyCard> card;
};

} // namespace pobblewig
