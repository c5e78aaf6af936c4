#pragma once

#include <QPointF>
#include <QRect>

#include <optional>

namespace pobblewig {

/// Being carried by hand, and sliding on a little when the hand lets go. Places are those of
/// `BuddyPlacement`, times are seconds: those of the hand tell when it moved, however late that is
/// heard of.
class BuddyGlide {
public:
    bool isGliding() const { return m_isGliding; }

    /// The hand takes hold of the buddy: a glide is over.
    void grab(QPoint place, double handTime);
    void carry(QPoint place, double handTime);

    /// Slides on as fast as it was carried, but never over the edge of the bounds. One that was put
    /// down with care stays where it is.
    void release(const QRect& bounds, double handTime);

    void stop() { m_isGliding = false; }

    /// Where a glide has come to, which begins with the first tick, or where it ended.
    QPoint tick(double now);

private:
    QPointF at(double seconds) const;

    bool m_isGliding = false;
    QPointF m_place;
    QPointF m_measuredPlace;
    double m_measuredAt = 0;
    /// Pixels a second: by hand, then at the start of the glide.
    QPointF m_velocity;
    std::optional<double> m_startedAt;
    double m_duration = 0;
    QPointF m_start;
    QRectF m_bounds;
};

} // namespace pobblewig
