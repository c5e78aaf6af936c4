#pragma once

#include "buddy/BuddyBitmap.h"
#include "buddy/BuddyCanvas.h"
#include "buddy/BuddyPose.h"

#include <QRect>

namespace pobblewig {

/// Places each block of a pose in whole device pixels, without gaps between blocks.
///
/// The feet stay still while the body breathes; they leave the ground only in a pose that is at
/// least a point above it.
class BuddyLayout {
public:
    BuddyLayout(const BuddyPose& pose, const BuddyCanvas& canvas);

    QRect rect(const BuddyBlock& block) const;

    /// The upper edge of a row of dots, and the middle of the body.
    int top(int row) const;
    int middle() const { return m_middle; }

private:
    int left(int row, int col) const;
    int lean(int row) const;

    int m_cell;
    int m_ground;
    int m_middle;
    int m_bodyWidth;
    int m_height;
    int m_lift;
    int m_feetLift;
    int m_headLean;
};

} // namespace pobblewig
