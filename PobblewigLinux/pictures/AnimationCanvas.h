#pragma once

#include <QImage>

namespace pobblewig {

/// What the frames of an animation are painted on, one after another.
class AnimationCanvas {
public:
    /// What becomes of a frame before the next one is painted.
    enum class Disposal { keep, clear, restore };

    /// Transparent.
    explicit AnimationCanvas(QSize size);

    /// Prepares for a frame that is painted within the area, and returns what to paint it on: null
    /// if there is not enough memory.
    QImage& next(const QRect& area, Disposal disposal);

    const QImage& picture() const { return m_picture; }

private:
    QImage m_picture;
    /// Only while the frame must be undone.
    QImage m_before;
    QRect m_area;
    Disposal m_disposal = Disposal::keep;
};

} // namespace pobblewig
