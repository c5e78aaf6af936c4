#pragma once

#include <QRect>

#include <vector>

namespace pobblewig {

/// The parts of a window that count, in device pixels. Rectangles may overlap.
struct BuddyShape {
    /// These take clicks.
    std::vector<QRect> pressable;
    /// These are only seen.
    std::vector<QRect> seen;

    bool operator==(const BuddyShape&) const = default;
};

} // namespace pobblewig
