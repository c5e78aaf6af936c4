#include "PobblewigLinux/pictures/WebPDecoder.h"

#include <QtEndian>

#include <webp/decode.h>
#include <webp/demux.h>

namespace pobblewig {

namespace {

const auto broken = tl::unexpected(MemePictureProblem::broken);

struct Closing {
    void operator()(WebPAnimDecoder* decoder) const { WebPAnimDecoderDelete(decoder); }
};

const uint8_t* start(const QByteArray& bytes)
{
    return reinterpret_cast<const uint8_t*>(bytes.constData());
}

/// Whether the file is as long as its beginning says.
bool isWhole(const QByteArray& bytes)
{
    constexpr qsizetype prefix = 8;
    return bytes.size() > prefix
        && qFromLittleEndian<quint32>(bytes.constData() + 4) <= bytes.size() - prefix;
}

PictureResult decodeStill(const QByteArray& bytes, QSize whole, PictureReel& reel)
{
    const auto size = PictureReel::fitted(whole);
    QImage picture(size, PictureReel::format);
    WebPDecoderConfig config;
    if (picture.isNull() || !WebPInitDecoderConfig(&config))
        return tl::unexpected(MemePictureProblem::tooLarge);
    config.options.use_scaling = size != whole;
    config.options.scaled_width = size.width();
    config.options.scaled_height = size.height();
    config.output.colorspace = MODE_bgrA;
    config.output.is_external_memory = 1;
    config.output.u.RGBA = { .rgba = picture.bits(),
        .stride = int(picture.bytesPerLine()),
        .size = size_t(picture.sizeInBytes()) };
    if (WebPDecode(start(bytes), size_t(bytes.size()), &config) != VP8_STATUS_OK)
        return broken;
    reel.add(std::move(picture), 0);
    return reel.finish();
}

PictureResult decodeAnimation(const QByteArray& bytes, QSize size, PictureReel& reel)
{
    WebPAnimDecoderOptions options;
    WebPAnimDecoderOptionsInit(&options);
    options.color_mode = MODE_bgrA;
    const WebPData data { start(bytes), size_t(bytes.size()) };
    const std::unique_ptr<WebPAnimDecoder, Closing> decoder(WebPAnimDecoderNew(&data, &options));
    if (!decoder)
        return broken;
    int before = 0;
    while (!reel.isFull() && WebPAnimDecoderHasMoreFrames(decoder.get())) {
        if (const auto paid = reel.spend(size); !paid)
            return tl::unexpected(paid.error());
        uint8_t* pixels = nullptr;
        int end = 0;
        if (!WebPAnimDecoderGetNext(decoder.get(), &pixels, &end))
            return broken;
        const QImage canvas(pixels, size.width(), size.height(), PictureReel::format);
        // The decoder paints the next frame on the same pixels.
        reel.add(canvas.copy(), (end - std::exchange(before, end)) / 1000.0);
    }
    return reel.finish();
}

} // namespace

PictureResult decodeWebP(const QByteArray& bytes, const PictureLimits& limits)
{
    WebPBitstreamFeatures features;
    if (!isWhole(bytes)
        || WebPGetFeatures(start(bytes), size_t(bytes.size()), &features) != VP8_STATUS_OK)
        return broken;
    const QSize size(features.width, features.height);
    PictureReel reel(limits);
    if (const auto admitted = reel.admit(size); !admitted)
        return tl::unexpected(admitted.error());
    return features.has_animation ? decodeAnimation(bytes, size, reel)
                                  : decodeStill(bytes, size, reel);
}

} // namespace pobblewig
