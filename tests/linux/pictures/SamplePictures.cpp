#include "SamplePictures.h"

#include "PobblewigLinux/pictures/PNGChunks.h"

#include <QBuffer>
#include <QtEndian>

#include <gif_lib.h>
#include <turbojpeg.h>
#include <webp/encode.h>
#include <webp/mux.h>

namespace pobblewig::SamplePictures {

namespace {

const std::map<char16_t, QColor> colors { { u'r', Qt::red }, { u'g', Qt::green },
    { u'b', Qt::blue }, { u'w', Qt::white }, { u'k', Qt::black }, { u'.', Qt::transparent },
    { u'h', QColor(255, 255, 255, 128) } };

int distance(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b))
        + std::abs(qBlue(a) - qBlue(b)) + std::abs(qAlpha(a) - qAlpha(b));
}

int append(GifFileType* file, const GifByteType* bytes, int count)
{
    static_cast<QByteArray*>(file->UserData)->append(reinterpret_cast<const char*>(bytes), count);
    return count;
}

/// At most 256.
QList<QRgb> distinctColors(const QImage& picture)
{
    QList<QRgb> found;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (!found.contains(picture.pixel(x, y)))
                found.append(picture.pixel(x, y));
        }
    }
    return found;
}

void writeRows(
    GifFileType* file, const QImage& picture, const QList<QRgb>& table, int first, int step)
{
    std::vector<GifPixelType> line(size_t(picture.width()));
    for (int y = first; y < picture.height(); y += step) {
        for (int x = 0; x < picture.width(); ++x)
            line[size_t(x)] = GifPixelType(table.indexOf(picture.pixel(x, y)));
        EGifPutLine(file, line.data(), picture.width());
    }
}

void writeFrame(GifFileType* file, const Frame& frame, Lines lines)
{
    const auto& picture = frame.picture;
    const auto table = distinctColors(picture);
    auto* const map = GifMakeMapObject(1 << GifBitSize(int(table.size())), nullptr);
    std::ranges::transform(table, map->Colors, [](QRgb color) {
        return GifColorType { uchar(qRed(color)), uchar(qGreen(color)), uchar(qBlue(color)) };
    });
    const GraphicsControlBlock control { frame.disposal, false, frame.delay,
        int(table.indexOf(qRgba(0, 0, 0, 0))) };
    GifByteType extension[4];
    EGifGCBToExtension(&control, extension);
    EGifPutExtension(file, GRAPHICS_EXT_FUNC_CODE, sizeof extension, extension);
    const auto isInterlaced = lines == Lines::interlaced;
    EGifPutImageDesc(
        file, frame.at.x(), frame.at.y(), picture.width(), picture.height(), isInterlaced, map);
    GifFreeMapObject(map);
    if (!isInterlaced)
        return writeRows(file, picture, table, 0, 1);
    writeRows(file, picture, table, 0, 8);
    writeRows(file, picture, table, 4, 8);
    writeRows(file, picture, table, 2, 4);
    writeRows(file, picture, table, 1, 2);
}

QByteArray bigEndian(std::initializer_list<quint32> numbers)
{
    QByteArray bytes;
    for (const auto number : numbers) {
        const auto swapped = qToBigEndian(number);
        bytes.append(reinterpret_cast<const char*>(&swapped), sizeof swapped);
    }
    return bytes;
}

/// The chunks of that name of the picture alone.
QByteArray content(const QImage& picture, QByteArrayView name)
{
    const auto file = still(picture.convertToFormat(QImage::Format_ARGB32), "PNG");
    QByteArray found;
    PNGChunks chunks(file);
    while (const auto chunk = chunks.next())
        found += chunk->name == name ? chunk->data.toByteArray() : QByteArray();
    return found;
}

} // namespace

QImage picture(const QString& rows)
{
    const auto lines = rows.split(u'/');
    QImage picture(int(lines.front().size()), int(lines.size()), QImage::Format_ARGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixelColor(x, y, colors.at(lines[y][x].unicode()));
    }
    return picture;
}

QString rows(const QImage& picture)
{
    QString text;
    for (int y = 0; y < picture.height(); ++y) {
        text += y > 0 ? QStringLiteral("/") : QString();
        for (int x = 0; x < picture.width(); ++x) {
            const auto nearest = std::ranges::min_element(colors, {}, [&](const auto& entry) {
                return distance(entry.second.rgba(), picture.pixel(x, y));
            });
            text += QChar(nearest->first);
        }
    }
    return text;
}

QByteArray gif(QSize canvas, const std::vector<Frame>& frames, Lines lines)
{
    QByteArray bytes;
    auto* const file = EGifOpen(&bytes, append, nullptr);
    EGifSetGifVersion(file, true);
    EGifPutScreenDesc(file, canvas.width(), canvas.height(), 8, 0, nullptr);
    for (const auto& frame : frames)
        writeFrame(file, frame, lines);
    EGifCloseFile(file, nullptr);
    return bytes;
}

QByteArray apng(QSize canvas, const std::vector<Frame>& frames, const QImage& still)
{
    auto header = content(frames.front().picture, "IHDR");
    header.replace(0, 8, bigEndian({ quint32(canvas.width()), quint32(canvas.height()) }));
    auto file = PNGChunks::signature.toByteArray() + PNGChunks::written({ "IHDR", header });
    file += PNGChunks::written({ "acTL", bigEndian({ quint32(frames.size()), 0 }) });
    if (!still.isNull())
        file += PNGChunks::written({ "IDAT", content(still, "IDAT") });
    quint32 sequence = 0;
    for (const auto& frame : frames) {
        const auto isFirst = sequence == 0 && still.isNull();
        file += PNGChunks::written({ "fcTL",
            bigEndian({ sequence++, quint32(frame.picture.width()), quint32(frame.picture.height()),
                quint32(frame.at.x()), quint32(frame.at.y()), quint32(frame.delay) << 16 | 100 })
                + char(frame.disposal) + char(frame.blends) });
        const auto pixels = content(frame.picture, "IDAT");
        file += isFirst ? PNGChunks::written({ "IDAT", pixels })
                        : PNGChunks::written({ "fdAT", bigEndian({ sequence++ }) + pixels });
    }
    return file + PNGChunks::written({ "IEND", {} });
}

QByteArray webp(QSize canvas, const std::vector<Frame>& frames)
{
    auto* const encoder = WebPAnimEncoderNew(canvas.width(), canvas.height(), nullptr);
    WebPConfig config;
    WebPConfigInit(&config);
    WebPConfigLosslessPreset(&config, 0);
    int time = 0;
    for (const auto& frame : frames) {
        WebPPicture picture;
        WebPPictureInit(&picture);
        picture.use_argb = 1;
        picture.width = canvas.width();
        picture.height = canvas.height();
        const auto pixels = frame.picture.convertToFormat(QImage::Format_RGBA8888);
        WebPPictureImportRGBA(&picture, pixels.constBits(), int(pixels.bytesPerLine()));
        WebPAnimEncoderAdd(encoder, &picture, time, &config);
        WebPPictureFree(&picture);
        time += frame.delay * 10;
    }
    WebPAnimEncoderAdd(encoder, nullptr, time, nullptr);
    WebPData data {};
    WebPAnimEncoderAssemble(encoder, &data);
    const QByteArray bytes(reinterpret_cast<const char*>(data.bytes), qsizetype(data.size));
    WebPDataClear(&data);
    WebPAnimEncoderDelete(encoder);
    return bytes;
}

QByteArray still(const QImage& picture, const char* format)
{
    QBuffer buffer;
    picture.save(&buffer, format, 100);
    return buffer.data();
}

QByteArray heldJPEG(const QImage& picture, char orientation)
{
    auto note = QByteArray::fromHex("ffe100224578696600004d4d002a00000008000101120003000000010000"
                                    "000000000000");
    note[note.size() - 7] = orientation;
    return still(picture, "JPG").insert(2, note);
}

QByteArray inkJPEG(const QImage& picture)
{
    // No black ink; the others are what they let through.
    const auto inks = picture.convertToFormat(QImage::Format_RGBA8888);
    auto* const encoder = tjInitCompress();
    uchar* start = nullptr;
    ulong size = 0;
    tjCompress2(encoder, inks.constBits(), inks.width(), int(inks.bytesPerLine()), inks.height(),
        TJPF_CMYK, &start, &size, TJSAMP_444, 100, 0);
    const QByteArray bytes(reinterpret_cast<const char*>(start), qsizetype(size));
    tjFree(start);
    tjDestroy(encoder);
    return bytes;
}

std::map<QString, QByteArray> all()
{
    const auto one = picture(QStringLiteral("rgb./.rgb/h.rg"));
    const auto other = picture(QStringLiteral("bb/.k"));
    const std::vector<Frame> frames { { one }, { other, 5, { 1, 1 }, 2 }, { one, 0, {}, 1 } };
    const auto large = one.scaled(40, 30);
    return { { QStringLiteral("gif"), gif({ 4, 3 }, frames) },
        { QStringLiteral("interlaced-gif"), gif({ 40, 30 }, { { large } }, Lines::interlaced) },
        { QStringLiteral("apng"), apng({ 4, 3 }, frames) },
        { QStringLiteral("still-apng"), apng({ 4, 3 }, frames, one) },
        { QStringLiteral("png"), still(one, "PNG") },
        { QStringLiteral("deep-png"), still(one.convertToFormat(QImage::Format_RGBA64), "PNG") },
        { QStringLiteral("palette-png"),
            still(one.convertToFormat(QImage::Format_Indexed8), "PNG") },
        { QStringLiteral("webp"), webp({ 40, 30 }, { { large }, { large.mirrored() } }) },
        { QStringLiteral("still-webp"), still(large, "WEBP") },
        { QStringLiteral("jpeg"), heldJPEG(large, 6) },
        { QStringLiteral("gray-jpeg"),
            still(large.convertToFormat(QImage::Format_Grayscale8), "JPG") },
        { QStringLiteral("ink-jpeg"), inkJPEG(large) } };
}

} // namespace pobblewig::SamplePictures
