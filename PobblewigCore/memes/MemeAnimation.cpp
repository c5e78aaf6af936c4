#include "memes/MemeAnimation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace pobblewig {

MemeAnimation::MemeAnimation(std::vector<QImage> frames, std::vector<double> durations)
    : m_frames(std::move(frames))
    , m_durations(std::move(durations))
    , m_totalDuration(std::max(0.001, std::accumulate(m_durations.begin(), m_durations.end(), 0.0)))
{
    Q_ASSERT(!m_frames.empty() && m_frames.size() == m_durations.size());
}

MemeAnimation::MemeAnimation(QImage picture)
    : MemeAnimation(std::vector { std::move(picture) }, { 0.1 })
{
}

const QImage& MemeAnimation::frame(double at) const
{
    if (!isMoving())
        return m_frames.front();
    const auto reduced = std::fmod(at, m_totalDuration);
    auto end = 0.0;
    for (size_t index = 0; index < m_frames.size(); ++index) {
        end += m_durations[index];
        if (end > reduced)
            return m_frames[index];
    }
    return m_frames.back();
}

} // namespace pobblewig
