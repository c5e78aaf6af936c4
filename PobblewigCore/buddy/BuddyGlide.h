#pragma once

#include <QPointF>
#include <QRect>

#include <optional>

namespace pobblewig {

/// Carries the buddy by hand, and lets it slide on a little when the hand lets go. Places are those
/// of `BuddyPlacement`, times are in seconds. The times of the hand tell when it moved, however
/// late the event arrives.
class BuddyGlide {
public:
    bool isGliding() const { return m_isGliding; }

    /// The hand takes hold of the buddy, which ends a glide.
    void grab(QPoint place, double handTime);
    void carry(QPoint place, double handTime);

    /// Lets the buddy slide on as fast as it was carried, but never beyond the bounds. A buddy that
    /// was put down carefully stays where it is.
    void release(const QRect& bounds, double handTime);

    void stop() { m_isGliding = false; }

    /// Returns how far the glide has come, or where it ended. It begins with the first tick.
    QPoint tick(double now);

private:
    QPointF at(double seconds) const;

    bool m_isGliding = false;
    QPointF m_place;
    QPointF m_measuredPlace;
    double m_measuredAt = 0;
    /// In pixels a second: the hand's, then that of the start of the glide.
    QPointF m_velocity;
    std::optional<double> m_startedAt;
    double m_duration = 0;
    QPointF m_start;
    QRectF m_bounds;
};

} // namespace pobblewig
