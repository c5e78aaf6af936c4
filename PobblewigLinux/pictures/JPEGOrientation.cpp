#include "PobblewigLinux/pictures/JPEGOrientation.h"

#include <QtEndian>

#include <array>

namespace pobblewig {

namespace {

constexpr qsizetype entryLength = 12;
constexpr quint16 orientationTag = 0x0112;

/// The note is a table in the byte order of the camera. Reads 0 beyond its end.
class CameraNote {
public:
    explicit CameraNote(QByteArrayView bytes)
        : m_bytes(bytes)
        , m_isBigEndian(bytes.startsWith("MM"))
    {
    }

    int orientation() const
    {
        const auto table = qsizetype(number<quint32>(4));
        const auto count = number<quint16>(table);
        for (int entry = 0; entry < count; ++entry) {
            const auto offset = table + 2 + entry * entryLength;
            if (number<quint16>(offset) == orientationTag)
                return number<quint16>(offset + 8);
        }
        return 0;
    }

private:
    template <typename Number>
    Number number(qsizetype offset) const
    {
        if (offset > m_bytes.size() - qsizetype(sizeof(Number)))
            return 0;
        const auto* const start = m_bytes.data() + offset;
        return m_isBigEndian ? qFromBigEndian<Number>(start) : qFromLittleEndian<Number>(start);
    }

    QByteArrayView m_bytes;
    bool m_isBigEndian;
};

/// Empty if there is none in front of the pixels.
QByteArrayView cameraNote(QByteArrayView jpeg)
{
    constexpr QByteArrayView mark("Exif\0\0", 6);
    auto rest = jpeg.sliced(std::min<qsizetype>(2, jpeg.size()));
    while (rest.size() > 4 && rest.startsWith('\xff') && !rest.startsWith("\xff\xda")) {
        const qsizetype length = 2 + qFromBigEndian<quint16>(rest.data() + 2);
        if (length > rest.size())
            break;
        const auto content = rest.first(length).sliced(std::min<qsizetype>(4, length));
        if (rest.startsWith("\xff\xe1") && content.startsWith(mark))
            return content.sliced(mark.size());
        rest = rest.sliced(length);
    }
    return {};
}

} // namespace

QTransform uprightTransform(QByteArrayView jpeg)
{
    // How a picture is mirrored and turned by each number.
    static const std::array transforms { QTransform(), QTransform(), QTransform(-1, 0, 0, 1, 0, 0),
        QTransform(-1, 0, 0, -1, 0, 0), QTransform(1, 0, 0, -1, 0, 0), QTransform(0, 1, 1, 0, 0, 0),
        QTransform(0, 1, -1, 0, 0, 0), QTransform(0, -1, -1, 0, 0, 0),
        QTransform(0, -1, 1, 0, 0, 0) };
    const auto orientation = size_t(CameraNote(cameraNote(jpeg)).orientation());
    return orientation < transforms.size() ? transforms[orientation] : QTransform();
}

} // namespace pobblewig
