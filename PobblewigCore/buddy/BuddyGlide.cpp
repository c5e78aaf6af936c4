#include "buddy/BuddyGlide.h"

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

/// Seconds: how far back the hand's speed counts, and how soon friction takes two thirds of it.
constexpr double memory = 0.04;
constexpr double friction = 0.16;
/// Pixels a second.
constexpr double careful = 150;
constexpr double fastest = 2400;
constexpr double resting = 20;

double length(QPointF vector)
{
    return std::hypot(vector.x(), vector.y());
}

} // namespace

void BuddyGlide::grab(QPoint place, double handTime)
{
    m_isGliding = false;
    m_place = place;
    m_measuredPlace = place;
    m_measuredAt = handTime;
    m_velocity = {};
}

void BuddyGlide::carry(QPoint place, double handTime)
{
    // Motions that come in a bunch are one: divided by next to no time they would be a leap.
    constexpr double bunch = 0.004;
    m_place = place;
    const auto seconds = handTime - m_measuredAt;
    if (seconds < bunch)
        return;
    const auto speed = (m_place - m_measuredPlace) / seconds;
    m_velocity += (speed - m_velocity) * (1 - std::exp(-seconds / memory));
    m_measuredPlace = m_place;
    m_measuredAt = handTime;
}

void BuddyGlide::release(const QRect& bounds, double handTime)
{
    m_velocity *= std::exp(-std::max(0.0, handTime - m_measuredAt) / memory);
    const auto speed = length(m_velocity);
    if (speed < careful)
        return;
    m_velocity *= std::min(1.0, fastest / speed);
    m_isGliding = true;
    m_start = m_place;
    m_startedAt.reset();
    m_duration = friction * std::log(length(m_velocity) / resting);
    // Where the hand has put it is allowed, or the glide would begin with a leap.
    m_bounds = QRectF(QPointF(std::min(double(bounds.left()), m_start.x()),
                          std::min(double(bounds.top()), m_start.y())),
        QPointF(std::max(double(bounds.right()), m_start.x()),
            std::max(double(bounds.bottom()), m_start.y())));
}

QPoint BuddyGlide::tick(double now)
{
    if (!m_isGliding)
        return m_place.toPoint();
    const auto seconds = now - m_startedAt.value_or(now);
    m_startedAt = now - seconds;
    const auto end = at(m_duration).toPoint();
    m_place = at(std::min(seconds, m_duration));
    m_isGliding = m_place.toPoint() != end;
    return m_place.toPoint();
}

QPointF BuddyGlide::at(double seconds) const
{
    const auto way = m_velocity * friction * (1 - std::exp(-seconds / friction));
    const auto place = m_start + way;
    return { std::clamp(place.x(), m_bounds.left(), m_bounds.right()),
        std::clamp(place.y(), m_bounds.top(), m_bounds.bottom()) };
}

} // namespace pobblewig
