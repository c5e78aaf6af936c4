#pragma once

#include "memes/MemePictureDecoding.h"

#include <QSize>

namespace pobblewig {

using PictureResult = tl::expected<MemeAnimation, MemePictureProblem>;

/// Something that the decoding of a picture goes through.
using PictureStep = tl::expected<void, MemePictureProblem>;

/// How much one picture may cost, in pixels.
struct PictureLimits {
    /// On its canvas.
    qint64 canvas = MemePictureDecoding::mostPixels;
    /// For all of its frames together. So many take two seconds at most.
    qint64 work = 256LL * 1024 * 1024;
};

/// The frames of one picture as they come. Each is made small at once, so that only one is ever
/// held whole.
class PictureReel {
public:
    /// Blue comes first in memory. It is the format that is painted fastest.
    static constexpr auto format = QImage::Format_ARGB32_Premultiplied;
    static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN);

    explicit PictureReel(const PictureLimits& limits);

    /// Asked before memory for pictures of this size is taken. One without pixels is broken.
    PictureStep admit(QSize size) const;

    /// Asked before so many pixels are computed.
    PictureStep spend(QSize size);

    /// Whether no more frames are wanted.
    bool isFull() const { return count() == MemePictureDecoding::mostFrames; }
    int count() const { return int(m_frames.size()); }

    /// A frame that is shown for that long; 0 if the file does not say. Takes the standard format,
    /// or the same without premultiplication.
    void add(QImage frame, double seconds);

    /// All frames. A picture without any is broken.
    PictureResult finish();

    /// The size that a picture is shown in: the same shape, with no side too long.
    static QSize fitted(QSize size);

private:
    PictureLimits m_limits;
    std::vector<QImage> m_frames;
    std::vector<double> m_durations;
};

} // namespace pobblewig
