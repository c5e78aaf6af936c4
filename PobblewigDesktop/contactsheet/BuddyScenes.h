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
    /// Before each frame of a sixtieth of a second, if something goes on all the time.
    Act goOn {};
};

namespace BuddyScenes {

/// One for each thing that it can do.
const std::vector<BuddyScene>& all();

/// The frames of a scene at its moments.
std::vector<BuddyFrame> frames(const BuddyScene& scene);

/// A day in the life of the buddy, with so many frames a second.
std::vector<BuddyFrame> film(int framesASecond);

} // namespace BuddyScenes

} // namespace pobblewig
