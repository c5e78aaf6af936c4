#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>
#include <vector>

namespace pobblewig {

/// A picture that moves, in the format that browsers and README viewers play.
class AnimatedPNG {
public:
    /// For so many milliseconds; all frames are of one size. A frame that looks like the one before
    /// makes that last longer.
    void append(const QImage& frame, int milliseconds);

    /// Nothing without a frame. Plays for ever.
    std::optional<QByteArray> encoded() const;

private:
    struct Frame {
        /// What differs from the frame before, and where.
        QImage image;
        QPoint corner;
        int milliseconds = 0;
    };

    std::vector<Frame> m_frames;
    QImage m_last;
};

} // namespace pobblewig
