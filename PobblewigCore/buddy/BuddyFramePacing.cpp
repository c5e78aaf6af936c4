#include "buddy/BuddyFramePacing.h"

namespace pobblewig {

BuddyFramePacing::Interval BuddyFramePacing::interval(const Input& input)
{
    if (input.isOccluded)
        return occluded;
    const auto isLively = input.isDragging || input.isMoving || input.isPetting || input.hasMeme
        || input.hasHearts || input.isTransitioning || input.isActiveState;
    if (isLively)
        return full;
    return input.sleepAmount > 0 ? asleep : idle;
}

} // namespace pobblewig
