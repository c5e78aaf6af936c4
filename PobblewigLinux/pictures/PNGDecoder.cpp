#include "PobblewigLinux/pictures/PNGDecoder.h"

#include "PobblewigLinux/pictures/AnimationCanvas.h"
#include "PobblewigLinux/pictures/PNGChunks.h"
#include "PobblewigLinux/pictures/PNGPixels.h"

#include <QPainter>
#include <QtEndian>

#include <array>

namespace pobblewig {

namespace {

using Disposal = AnimationCanvas::Disposal;

const auto broken = tl::unexpected(MemePictureProblem::broken);

constexpr qsizetype headerLength = 13;
constexpr qsizetype animationControlLength = 8;
constexpr qsizetype frameControlLength = 26;
/// The largest palette, and what else goes with the colours.
constexpr qsizetype mostColorBytes = 2048;

struct FrameControl {
    QRect area;
    double seconds;
    Disposal disposal;
    bool blends;
};

quint32 number(QByteArrayView data, qsizetype offset)
{
    return qFromBigEndian<quint32>(data.data() + offset);
}

QSize size(QByteArrayView data, qsizetype offset)
{
    constexpr quint32 most = std::numeric_limits<int>::max();
    return QSize(
        int(std::min(number(data, offset), most)), int(std::min(number(data, offset + 4), most)));
}

double seconds(QByteArrayView data, qsizetype offset)
{
    const auto numerator = qFromBigEndian<quint16>(data.data() + offset);
    const auto denominator = qFromBigEndian<quint16>(data.data() + offset + 2);
    return double(numerator) / (denominator == 0 ? 100 : denominator);
}

/// Nothing if the frame does not lie within the canvas, or says something unknown.
std::optional<FrameControl> frameControl(QByteArrayView data, QSize canvas)
{
    const auto frame = size(data, 4);
    const auto corner = size(data, 12);
    const auto fits = [](int start, int length, int whole) {
        return length > 0 && start <= whole && length <= whole - start;
    };
    const auto disposal = uchar(data[24]);
    const auto blending = uchar(data[25]);
    if (!fits(corner.width(), frame.width(), canvas.width())
        || !fits(corner.height(), frame.height(), canvas.height()) || disposal > 2 || blending > 1)
        return std::nullopt;
    return FrameControl { .area = QRect(QPoint(corner.width(), corner.height()), frame),
        .seconds = seconds(data, 20),
        .disposal = std::array { Disposal::keep, Disposal::clear, Disposal::restore }[disposal],
        .blends = blending == 1 };
}

class PNGReader {
public:
    PNGReader(const QByteArray& bytes, const PictureLimits& limits)
        : m_chunks(bytes)
        , m_reel(limits)
    {
    }

    PictureResult read()
    {
        while (const auto chunk = m_chunks.next()) {
            if (const auto step = take(*chunk); !step)
                return tl::unexpected(step.error());
            if (chunk->name == "IEND" || m_reel.isFull())
                return m_reel.finish();
        }
        return broken;
    }

private:
    PictureStep take(const PNGChunk& chunk)
    {
        if (m_size.isEmpty())
            return takeHeader(chunk);
        if (chunk.name == "acTL")
            return takeAnimationControl(chunk.data);
        if (chunk.name == "fcTL")
            return takeFrameControl(chunk.data);
        if (chunk.name == "IDAT")
            return takePixels(chunk);
        if (chunk.name == "fdAT")
            return takeFrameData(chunk.data);
        if (chunk.name == "IEND")
            return finish();
        return takeColors(chunk);
    }

    PictureStep takeHeader(const PNGChunk& chunk)
    {
        if (chunk.name != "IHDR" || chunk.data.size() != headerLength)
            return broken;
        m_header = chunk.data;
        m_size = size(m_header, 0);
        return m_reel.admit(m_size);
    }

    PictureStep takeColors(const PNGChunk& chunk)
    {
        if (chunk.name != "PLTE" && chunk.name != "tRNS" && chunk.name != "gAMA"
            && chunk.name != "sRGB")
            return {};
        m_colors += chunk.whole;
        if (m_colors.size() > mostColorBytes)
            return broken;
        return {};
    }

    PictureStep takeAnimationControl(QByteArrayView data)
    {
        // Behind the pixels it is none.
        if (m_frameCount > 0 || !m_pixels.isEmpty())
            return {};
        m_frameCount = data.size() == animationControlLength ? number(data, 0) : 0;
        if (m_frameCount == 0)
            return broken;
        return {};
    }

    PictureStep takeFrameControl(QByteArrayView data)
    {
        if (m_frameCount == 0)
            return {};
        if (data.size() != frameControlLength || !isNextInSequence(data))
            return broken;
        const auto last = finishFrame();
        if (!last || m_reel.isFull())
            return last;
        m_control = frameControl(data, m_size);
        if (!m_control || quint32(m_reel.count()) == m_frameCount)
            return broken;
        return {};
    }

    PictureStep takePixels(const PNGChunk& chunk)
    {
        // An animation has a picture that is no part of it, for programs that show stills only.
        if (m_frameCount == 0 || m_control)
            m_pixels += chunk.whole;
        return {};
    }

    PictureStep takeFrameData(QByteArrayView data)
    {
        if (m_frameCount == 0)
            return {};
        if (data.size() < 4 || !m_control || !isNextInSequence(data))
            return broken;
        m_pixels += PNGChunks::written({ "IDAT", data.sliced(4) });
        return {};
    }

    PictureStep finish()
    {
        if (m_frameCount == 0)
            return finishStill();
        if (const auto last = finishFrame(); !last)
            return last;
        if (quint32(m_reel.count()) != m_frameCount)
            return broken;
        return {};
    }

    PictureStep finishStill()
    {
        auto picture = decodedPixels(m_size);
        if (picture.isNull())
            return broken;
        m_reel.add(std::move(picture), 0);
        return {};
    }

    /// There is none before the first frame control.
    PictureStep finishFrame()
    {
        const auto control = std::exchange(m_control, std::nullopt);
        if (!control)
            return {};
        if (const auto paid = m_reel.spend(m_size); !paid)
            return paid;
        const auto frame = decodedPixels(control->area.size());
        if (frame.isNull())
            return broken;
        return paint(frame, *control);
    }

    PictureStep paint(const QImage& frame, const FrameControl& control)
    {
        if (m_reel.count() == 0)
            m_canvas = AnimationCanvas(m_size);
        auto& picture = m_canvas.next(control.area, control.disposal);
        if (picture.isNull())
            return tl::unexpected(MemePictureProblem::tooLarge);
        QPainter painter(&picture);
        if (!control.blends)
            painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(control.area.topLeft(), frame);
        painter.end();
        m_reel.add(picture, control.seconds);
        return {};
    }

    bool isNextInSequence(QByteArrayView data) { return number(data, 0) == m_sequence++; }

    /// The pixels that have gathered, as a file of their own. Null if there are none.
    QImage decodedPixels(QSize frame)
    {
        auto header = m_header.toByteArray();
        qToBigEndian(quint32(frame.width()), header.data());
        qToBigEndian(quint32(frame.height()), header.data() + 4);
        return decodePNGPixels(frame,
            PNGChunks::signature.toByteArray() + PNGChunks::written({ "IHDR", header }) + m_colors
                + std::exchange(m_pixels, QByteArray()) + PNGChunks::written({ "IEND", {} }));
    }

    PNGChunks m_chunks;
    PictureReel m_reel;
    QSize m_size;
    QByteArrayView m_header;
    QByteArray m_colors;
    /// 0 for a still picture.
    quint32 m_frameCount = 0;
    quint32 m_sequence = 0;
    /// The frame whose pixels gather.
    std::optional<FrameControl> m_control;
    QByteArray m_pixels;
    AnimationCanvas m_canvas { QSize() };
};

} // namespace

PictureResult decodePNG(const QByteArray& bytes, const PictureLimits& limits)
{
    return PNGReader(bytes, limits).read();
}

} // namespace pobblewig
