#pragma once

#include "buddy/BuddyPose.h"
#include "mascots/MascotSprite.h"

#include <QPointF>

namespace pobblewig {

/// Lets the buddy be carried, and walk while the ground moves.
class BuddyWalk {
public:
    bool isDragging() const { return m_isDragging; }
    bool isMoving(double now) const { return m_movementUntil > now || m_energy > 0.03; }

    /// The legs, depending on the distance covered.
    MascotGait gait() const;

    /// Returns the pose with the motion of walking added.
    BuddyPose added(const BuddyPose& pose) const;

    void begin(double now);
    void end(double now);

    /// `by` is in points. Trembling does not count as a distance.
    void moved(QPointF by, double now);
    void tick(double now, double frames);

private:
    double stride() const;

    bool m_isDragging = false;
    double m_movementUntil = 0;
    double m_energy = 0;
    double m_way = 0;
    /// From -1 (leftwards) to 1.
    double m_heading = 0;
    double m_wantedHeading = 0;
};

} // namespace pobblewig
