#include "PobblewigLinux/pictures/PNGChunks.h"
#include "PobblewigLinux/pictures/PictureDecoder.h"

#include <QtEndian>

#include <cstdlib>

using namespace pobblewig;

namespace {

constexpr qsizetype mostBytes = 256 * 1024;

void demand(bool holds)
{
    if (!holds)
        std::abort();
}

/// With right checksums, without which nothing behind them would be tried.
QByteArray repaired(const QByteArray& file)
{
    constexpr qsizetype frameLength = 12;
    auto result = PNGChunks::signature.toByteArray();
    auto rest = QByteArrayView(file).sliced(result.size());
    while (rest.size() >= frameLength) {
        const qsizetype length = qFromBigEndian<quint32>(rest.data());
        if (length > rest.size() - frameLength)
            break;
        result += PNGChunks::written({ rest.sliced(4, 4), rest.sliced(8, length) });
        rest = rest.sliced(frameLength + length);
    }
    return result + rest.toByteArray();
}

} // namespace

/// A picture from elsewhere.
extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size)
{
    if (qsizetype(size) > mostBytes)
        return 0;
    auto bytes = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
    if (bytes.startsWith(PNGChunks::signature))
        bytes = repaired(bytes);
    static const PictureDecoder decoder({ .canvas = 1024 * 1024, .work = 4 * 1024 * 1024 });
    const auto animation = decoder.decode(bytes);
    if (!animation)
        return 0;
    demand(animation->frames().size() <= MemePictureDecoding::mostFrames);
    for (const auto& frame : animation->frames()) {
        demand(!frame.isNull() && frame.size() == animation->frames().front().size());
        demand(std::max(frame.width(), frame.height()) <= MemePictureDecoding::longestSide);
    }
    for (const auto duration : animation->durations())
        demand(duration >= MemePictureDecoding::shortestDelay);
    return 0;
}
