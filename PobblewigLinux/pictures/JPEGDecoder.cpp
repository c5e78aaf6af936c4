#include "PobblewigLinux/pictures/JPEGDecoder.h"

#include "PobblewigLinux/pictures/JPEGOrientation.h"

#include <span>
#include <turbojpeg.h>

namespace pobblewig {

namespace {

const auto broken = tl::unexpected(MemePictureProblem::broken);

struct Closing {
    void operator()(void* decoder) const { tjDestroy(decoder); }
};
using Decoder = std::unique_ptr<void, Closing>;

struct Header {
    QSize size;
    bool isCMYK;
};

const uchar* start(const QByteArray& bytes)
{
    return reinterpret_cast<const uchar*>(bytes.constData());
}

std::optional<Header> header(const Decoder& decoder, const QByteArray& bytes)
{
    int width = 0;
    int height = 0;
    int sampling = 0;
    int colors = 0;
    if (tjDecompressHeader3(
            decoder.get(), start(bytes), ulong(bytes.size()), &width, &height, &sampling, &colors)
        != 0)
        return std::nullopt;
    return Header { QSize(width, height), colors == TJCS_CMYK || colors == TJCS_YCCK };
}

/// A picture may be refined in many scans. Each is cheaper than a picture of its own.
PictureStep spendScans(PictureReel& reel, const QByteArray& bytes, QSize size)
{
    const auto scans = bytes.count("\xff\xda");
    PictureStep step;
    for (qsizetype scan = 0; scan < scans && step; ++scan)
        step = reel.spend(size / 2);
    return step;
}

/// The smallest size that the decoder itself can give and that need not be enlarged.
QSize decodedSize(QSize size)
{
    const auto wanted = PictureReel::fitted(size);
    int count = 0;
    const auto* const factors = tjGetScalingFactors(&count);
    auto smallest = size;
    for (const auto& factor : std::span(factors, size_t(count))) {
        const QSize scaled(TJSCALED(size.width(), factor), TJSCALED(size.height(), factor));
        if (scaled.width() >= wanted.width() && scaled.height() >= wanted.height())
            smallest = smallest.boundedTo(scaled);
    }
    return smallest;
}

/// Null if anything is wrong with the picture.
QImage decoded(const Decoder& decoder, const QByteArray& bytes, QSize size, TJPF pixels)
{
    QImage picture(size, PictureReel::format);
    const auto status = picture.isNull()
        ? -1
        : tjDecompress2(decoder.get(), start(bytes), ulong(bytes.size()), picture.bits(),
            size.width(), int(picture.bytesPerLine()), size.height(), pixels,
            TJFLAG_STOPONWARNING | TJFLAG_ACCURATEDCT);
    return status == 0 ? picture : QImage();
}

/// Printing inks stand inverted in the files of the programs that write them.
QImage withScreenColors(QImage picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        auto* const line = picture.scanLine(y);
        for (auto* pixel = line; pixel < line + qsizetype(picture.width()) * 4; pixel += 4) {
            const auto key = pixel[3];
            const auto mixed = [key](uchar ink) { return ink * key / 255; };
            const auto color = qRgb(mixed(pixel[0]), mixed(pixel[1]), mixed(pixel[2]));
            std::memcpy(pixel, &color, sizeof color);
        }
    }
    return picture;
}

} // namespace

PictureResult decodeJPEG(const QByteArray& bytes, const PictureLimits& limits)
{
    const Decoder decoder(tjInitDecompress());
    const auto found = header(decoder, bytes);
    if (!found)
        return broken;
    PictureReel reel(limits);
    const auto admitted =
        reel.admit(found->size).and_then([&] { return spendScans(reel, bytes, found->size); });
    if (!admitted)
        return tl::unexpected(admitted.error());
    auto picture =
        decoded(decoder, bytes, decodedSize(found->size), found->isCMYK ? TJPF_CMYK : TJPF_BGRA);
    if (picture.isNull())
        return broken;
    if (found->isCMYK)
        picture = withScreenColors(std::move(picture));
    reel.add(picture.transformed(uprightTransform(bytes)), 0);
    return reel.finish();
}

} // namespace pobblewig
