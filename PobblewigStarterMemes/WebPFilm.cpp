#include "PobblewigStarterMemes/WebPFilm.h"

#include <memory>
#include <webp/encode.h>
#include <webp/mux.h>

namespace pobblewig {

namespace {

using Encoder = std::unique_ptr<WebPAnimEncoder, decltype(&WebPAnimEncoderDelete)>;

class Picture {
public:
    explicit Picture(const QImage& image)
    {
        m_isValid = WebPPictureInit(&m_picture);
        const auto pixels = image.convertToFormat(QImage::Format_RGBA8888);
        m_picture.use_argb = 1;
        m_picture.width = pixels.width();
        m_picture.height = pixels.height();
        m_isValid = m_isValid
            && WebPPictureImportRGBA(&m_picture, pixels.constBits(), int(pixels.bytesPerLine()));
    }
    ~Picture() { WebPPictureFree(&m_picture); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    WebPPicture* get() { return m_isValid ? &m_picture : nullptr; }

private:
    WebPPicture m_picture {};
    bool m_isValid = false;
};

Encoder newEncoder(QSize size)
{
    WebPAnimEncoderOptions options;
    if (!WebPAnimEncoderOptionsInit(&options))
        return { nullptr, &WebPAnimEncoderDelete };
    options.anim_params.loop_count = 0;
    return { WebPAnimEncoderNew(size.width(), size.height(), &options), &WebPAnimEncoderDelete };
}

bool addShots(WebPAnimEncoder* encoder, const Film& film)
{
    constexpr int thorough = 6;
    WebPConfig lossless;
    if (!WebPConfigInit(&lossless) || !WebPConfigLosslessPreset(&lossless, thorough))
        return false;
    int start = 0;
    for (const auto& shot : film) {
        Picture picture(shot.canvas.picture());
        if (!picture.get() || !WebPAnimEncoderAdd(encoder, picture.get(), start, &lossless))
            return false;
        start += shot.milliseconds;
    }
    return WebPAnimEncoderAdd(encoder, nullptr, start, nullptr);
}

} // namespace

QByteArray encodedWebP(const Film& film)
{
    const auto encoder = newEncoder(film.front().canvas.picture().size());
    if (!encoder || !addShots(encoder.get(), film))
        return {};
    WebPData data;
    WebPDataInit(&data);
    const std::unique_ptr<WebPData, decltype(&WebPDataClear)> owner(&data, &WebPDataClear);
    if (!WebPAnimEncoderAssemble(encoder.get(), &data))
        return {};
    return { reinterpret_cast<const char*>(data.bytes), qsizetype(data.size) };
}

} // namespace pobblewig
