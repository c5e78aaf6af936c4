#pragma once

#include "buddy/BuddyPose.h"
#include "mascots/MascotSprite.h"

#include <QPointF>

namespace pobblewig {

/// Being carried, and walking while the ground moves.
class BuddyWalk {
public:
    bool isDragging() const { return m_isDragging; }
    bool isMoving(double now) const { return m_movementUntil > now || m_energy > 0.03; }

    /// The legs, by the way that lies behind.
    MascotGait gait() const;

    /// What walking adds to a pose.
    BuddyPose added(const BuddyPose& pose) const;

    void begin(double now);
    void end(double now);

    /// Points. Trembling is no way.
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
