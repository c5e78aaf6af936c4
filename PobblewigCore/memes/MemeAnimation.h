#pragma once

#include <QImage>

#include <vector>

namespace pobblewig {

/// A decoded picture, animated or still. It has at least one frame and repeats forever. Copies
/// share their pixels.
class MemeAnimation {
public:
    /// Takes as many durations as frames, in seconds.
    MemeAnimation(std::vector<QImage> frames, std::vector<double> durations);

    /// A still picture.
    explicit MemeAnimation(QImage picture);

    const std::vector<QImage>& frames() const { return m_frames; }
    const std::vector<double>& durations() const { return m_durations; }

    /// Never zero.
    double totalDuration() const { return m_totalDuration; }
    bool isMoving() const { return m_frames.size() > 1; }

    /// The frame shown this many seconds after the start.
    const QImage& frame(double at) const;

private:
    std::vector<QImage> m_frames;
    std::vector<double> m_durations;
    double m_totalDuration;
};

} // namespace pobblewig
