#pragma once

#include "buddy/BuddyAnimation.h"

#include <functional>
#include <vector>

namespace pobblewig {

/// Something that the buddy does, to be looked at.
struct BuddyScene {
    using Act = std::function<void(BuddyAnimation& buddy, double now)>;

    QString name;
    Act begin;
    /// Seconds after the beginning that are worth a picture.
    std::vector<double> moments;
    /// Called before each frame of a sixtieth of a second, if something goes on all the time.
    Act goOn {};
};

namespace BuddyScenes {

/// Returns a scene for each thing that the buddy can do.
const std::vector<BuddyScene>& all();

/// Returns the frames of a scene at its moments.
std::vector<BuddyFrame> frames(const BuddyScene& scene);

/// Returns a day in the life of the buddy, with so many frames a second.
std::vector<BuddyFrame> film(int framesASecond);

} // namespace BuddyScenes

} // namespace pobblewig
