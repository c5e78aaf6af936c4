#include "PobblewigLinux/pictures/GIFDecoder.h"

#include "PobblewigLinux/pictures/AnimationCanvas.h"

#include <array>
#include <gif_lib.h>
#include <span>

namespace pobblewig {

namespace {

using Disposal = AnimationCanvas::Disposal;
using Palette = std::array<QRgb, 256>;

constexpr GraphicsControlBlock noControl { .DisposalMode = DISPOSAL_UNSPECIFIED,
    .UserInputFlag = false,
    .DelayTime = 0,
    .TransparentColor = NO_TRANSPARENT_COLOR };

const auto broken = tl::unexpected(MemePictureProblem::broken);

int readSome(GifFileType* file, GifByteType* buffer, int wanted)
{
    auto& rest = *static_cast<QByteArrayView*>(file->UserData);
    const auto taken = std::min<qsizetype>(wanted, rest.size());
    std::copy_n(rest.begin(), taken, buffer);
    rest = rest.sliced(taken);
    return int(taken);
}

struct Closing {
    void operator()(GifFileType* file) const { DGifCloseFile(file, nullptr); }
};

/// A colour that the map lacks is transparent, as is the one that the frame names.
Palette palette(const ColorMapObject& map, int transparent)
{
    Palette colors {};
    for (int index = 0; index < map.ColorCount; ++index) {
        const auto& color = map.Colors[index];
        colors[size_t(index)] = qRgb(color.Red, color.Green, color.Blue);
    }
    if (transparent >= 0)
        colors[size_t(transparent)] = qRgba(0, 0, 0, 0);
    return colors;
}

Disposal disposal(const GraphicsControlBlock& control)
{
    if (control.DisposalMode == DISPOSE_BACKGROUND)
        return Disposal::clear;
    return control.DisposalMode == DISPOSE_PREVIOUS ? Disposal::restore : Disposal::keep;
}

/// The rows of a frame in the order in which they stand in the file.
std::vector<int> rowOrder(int height, bool isInterlaced)
{
    struct Pass {
        int first;
        int step;
    };
    constexpr std::array once { Pass { 0, 1 } };
    constexpr std::array interlaced { Pass { 0, 8 }, Pass { 4, 8 }, Pass { 2, 4 }, Pass { 1, 2 } };
    const auto passes =
        isInterlaced ? std::span<const Pass>(interlaced) : std::span<const Pass>(once);
    std::vector<int> rows;
    rows.reserve(size_t(height));
    for (const auto& pass : passes) {
        for (int row = pass.first; row < height; row += pass.step)
            rows.push_back(row);
    }
    return rows;
}

class GIFReader {
public:
    GIFReader(const QByteArray& bytes, const PictureLimits& limits)
        : m_rest(bytes)
        , m_file(DGifOpen(&m_rest, readSome, nullptr))
        , m_reel(limits)
    {
    }

    PictureResult read()
    {
        if (!m_file)
            return broken;
        m_size = QSize(m_file->SWidth, m_file->SHeight);
        if (const auto admitted = m_reel.admit(m_size); !admitted)
            return tl::unexpected(admitted.error());
        m_canvas = AnimationCanvas(m_size);
        while (!m_reel.isFull()) {
            auto kind = UNDEFINED_RECORD_TYPE;
            if (DGifGetRecordType(m_file.get(), &kind) == GIF_ERROR)
                return broken;
            if (kind == TERMINATE_RECORD_TYPE)
                break;
            const auto step = kind == IMAGE_DESC_RECORD_TYPE ? readFrame() : readExtension();
            if (!step)
                return tl::unexpected(step.error());
        }
        return m_reel.finish();
    }

private:
    PictureStep readExtension()
    {
        int kind = 0;
        GifByteType* block = nullptr;
        auto status = DGifGetExtension(m_file.get(), &kind, &block);
        while (status != GIF_ERROR && block) {
            // Its first byte is its length.
            if (kind == GRAPHICS_EXT_FUNC_CODE)
                DGifExtensionToGCB(block[0], block + 1, &m_control);
            status = DGifGetExtensionNext(m_file.get(), &block);
        }
        if (status == GIF_ERROR)
            return broken;
        return {};
    }

    PictureStep readFrame()
    {
        if (DGifGetImageDesc(m_file.get()) == GIF_ERROR)
            return broken;
        const auto control = std::exchange(m_control, noControl);
        const auto& frame = m_file->Image;
        const auto* const map = frame.ColorMap ? frame.ColorMap : m_file->SColorMap;
        const QRect area(frame.Left, frame.Top, frame.Width, frame.Height);
        if (!map || area.isEmpty())
            return broken;
        // It may be larger than the canvas, and is decoded whole.
        if (const auto paid = m_reel.spend(area.size().expandedTo(m_size)); !paid)
            return paid;
        auto& picture = m_canvas.next(area, disposal(control));
        if (picture.isNull())
            return tl::unexpected(MemePictureProblem::tooLarge);
        if (!paintRows(picture, area, palette(*map, control.TransparentColor)))
            return broken;
        m_reel.add(picture, control.DelayTime / 100.0);
        return {};
    }

    /// What lies outside of the canvas is left out.
    bool paintRows(QImage& picture, const QRect& area, const Palette& colors)
    {
        std::vector<GifPixelType> line(size_t(area.width()));
        const auto seen = std::max(0, std::min(area.width(), picture.width() - area.x()));
        for (const auto row : rowOrder(area.height(), m_file->Image.Interlace)) {
            if (DGifGetLine(m_file.get(), line.data(), area.width()) == GIF_ERROR)
                return false;
            const auto y = area.y() + row;
            if (y < picture.height() && seen > 0)
                paintRow(std::span(line).first(size_t(seen)), colors,
                    reinterpret_cast<QRgb*>(picture.scanLine(y)) + area.x());
        }
        return true;
    }

    static void paintRow(std::span<const GifPixelType> line, const Palette& colors, QRgb* target)
    {
        for (const auto index : line) {
            const auto color = colors[index];
            *target = color ? color : *target;
            ++target;
        }
    }

    QByteArrayView m_rest;
    std::unique_ptr<GifFileType, Closing> m_file;
    PictureReel m_reel;
    QSize m_size;
    AnimationCanvas m_canvas { QSize() };
    GraphicsControlBlock m_control = noControl;
};

} // namespace

PictureResult decodeGIF(const QByteArray& bytes, const PictureLimits& limits)
{
    return GIFReader(bytes, limits).read();
}

} // namespace pobblewig
