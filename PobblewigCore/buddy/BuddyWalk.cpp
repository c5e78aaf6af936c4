#include "buddy/BuddyWalk.h"

#include "buddy/BuddySmoothing.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pobblewig {

namespace {

/// Points from one gait to the next.
constexpr double stepLength = 9;

} // namespace

MascotGait BuddyWalk::gait() const
{
    constexpr std::array gaits { MascotGait::walkA, MascotGait::walkB, MascotGait::walkC,
        MascotGait::walkB };
    constexpr double atRest = 0.1;
    if (m_energy < atRest || m_way == 0)
        return MascotGait::idle;
    return gaits[size_t(stride()) % gaits.size()];
}

BuddyPose BuddyWalk::added(const BuddyPose& pose) const
{
    // The body goes by steps as the legs do: with every second gait it is up.
    const auto hop = m_way > 0 && int(stride()) % 2 == 0 ? 1 : 0;
    auto walking = pose;
    walking.tilt -= 0.07 * m_energy * m_heading;
    walking.sx *= 1 - 0.03 * m_energy;
    walking.sy *= 1 + 0.04 * m_energy;
    walking.yOff += 2 * m_energy * hop;
    return walking;
}

void BuddyWalk::begin(double now)
{
    m_isDragging = true;
    m_energy = std::max(m_energy, 0.75);
    m_movementUntil = now + 0.22;
}

void BuddyWalk::end(double now)
{
    m_isDragging = false;
    m_movementUntil = now + 0.06;
}

void BuddyWalk::moved(QPointF by, double now)
{
    constexpr double trembling = 0.05;
    const auto distance = std::hypot(by.x(), by.y());
    if (distance <= trembling)
        return;
    m_movementUntil = now + 0.2;
    m_way += distance;
    m_wantedHeading = by.x() / distance;
}

void BuddyWalk::tick(double now, double frames)
{
    const auto isOnTheMove = m_isDragging || now < m_movementUntil;
    m_energy = isOnTheMove ? BuddySmoothing::approached(m_energy, 1, 0.72, frames)
                           : BuddySmoothing::approached(m_energy, 0, 0.7, frames);
    if (now >= m_movementUntil)
        m_wantedHeading = 0;
    m_heading = BuddySmoothing::approached(m_heading, m_wantedHeading, 0.85, frames);
    if (m_energy == 0)
        m_way = 0;
}

double BuddyWalk::stride() const
{
    return m_way / stepLength;
}

} // namespace pobblewig
