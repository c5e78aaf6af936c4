#include "PobblewigLinux/pictures/PictureDecoder.h"

#include "PobblewigLinux/pictures/GIFDecoder.h"
#include "PobblewigLinux/pictures/JPEGDecoder.h"
#include "PobblewigLinux/pictures/PNGDecoder.h"
#include "PobblewigLinux/pictures/WebPDecoder.h"
#include "memes/MemePictures.h"

namespace pobblewig {

PictureDecoder::PictureDecoder(const PictureLimits& limits)
    : m_limits(limits)
{
}

PictureResult PictureDecoder::decode(const QByteArray& bytes) const
{
    using Format = MemePictures::Format;
    const auto format = MemePictures::format(bytes);
    if (!format)
        return tl::unexpected(MemePictureProblem::notAPicture);
    switch (*format) {
    case Format::gif:
        return decodeGIF(bytes, m_limits);
    case Format::png:
    case Format::apng:
        return decodePNG(bytes, m_limits);
    case Format::jpeg:
        return decodeJPEG(bytes, m_limits);
    case Format::webp:
        return decodeWebP(bytes, m_limits);
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
