#pragma once

#include <QRect>

#include <vector>

namespace pobblewig {

/// What of a window counts, in device pixels. Rectangles may overlap.
struct BuddyShape {
    /// Takes clicks.
    std::vector<QRect> pressable;
    /// Is only seen.
    std::vector<QRect> seen;

    bool operator==(const BuddyShape&) const = default;
};

} // namespace pobblewig
