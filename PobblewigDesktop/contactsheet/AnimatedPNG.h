#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>
#include <vector>

namespace pobblewig {

/// A picture that moves, in the format that browsers and README viewers play.
class AnimatedPNG {
public:
    /// Appends a frame that lasts for so many milliseconds; all frames have the same size. A frame
    /// that looks like the previous one only makes that last longer.
    void append(const QImage& frame, int milliseconds);

    /// Returns nothing if there is no frame. The animation plays for ever.
    std::optional<QByteArray> encoded() const;

private:
    struct Frame {
        /// The part that differs from the previous frame, and its place.
        QImage image;
        QPoint corner;
        int milliseconds = 0;
    };

    std::vector<Frame> m_frames;
    QImage m_last;
};

} // namespace pobblewig
