#include "memes/MemePictures.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <numeric>

namespace pobblewig::MemePictures {

namespace {

constexpr int thumbnailSide = 48;
constexpr qint64 signatureLength = 12;

/// Its animation control stands in front of the pixels.
bool isAnimatedPNG(QByteArrayView bytes)
{
    const auto pixels = bytes.indexOf("IDAT");
    return bytes.first(pixels < 0 ? bytes.size() : pixels).contains("acTL");
}

} // namespace

std::optional<Format> format(QByteArrayView bytes)
{
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a"))
        return Format::gif;
    if (bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return isAnimatedPNG(bytes) ? Format::apng : Format::png;
    if (bytes.startsWith("\xff\xd8\xff"))
        return Format::jpeg;
    if (bytes.startsWith("RIFF")
        && bytes.sliced(std::min<qsizetype>(8, bytes.size())).startsWith("WEBP"))
        return Format::webp;
    return std::nullopt;
}

bool isPicture(const QString& path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly)
        && format(file.read(signatureLength)).has_value();
}

tl::expected<MemeAnimation, MemePictureProblem> read(
    const QString& path, const MemePictureDecoding& decoder)
{
    const QFileInfo info(path);
    if (!info.exists())
        return tl::unexpected(MemePictureProblem::missing);
    QFile file(path);
    if (!info.isFile() || info.size() > mostBytes || !file.open(QIODevice::ReadOnly))
        return tl::unexpected(MemePictureProblem::unreadable);
    const auto bytes = file.read(mostBytes);
    if (!format(bytes))
        return tl::unexpected(MemePictureProblem::notAPicture);
    return decoder.decode(bytes);
}

QImage thumbnail(const MemeAnimation& animation)
{
    const auto& first = animation.frames().front();
    if (std::max(first.width(), first.height()) <= thumbnailSide)
        return first;
    return first.scaled(
        thumbnailSide, thumbnailSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

qint64 bytes(const MemeAnimation& animation)
{
    return std::transform_reduce(animation.frames().begin(), animation.frames().end(), qint64(0),
        std::plus(), [](const QImage& frame) { return frame.sizeInBytes(); });
}

QString inWords(MemePictureProblem problem)
{
    constexpr std::array texts { QT_TRANSLATE_NOOP("MemePictures", "The file is missing."),
        QT_TRANSLATE_NOOP("MemePictures", "The file cannot be read, or is larger than 32 MB."),
        QT_TRANSLATE_NOOP("MemePictures", "This is not a GIF, PNG, JPEG or WebP picture."),
        QT_TRANSLATE_NOOP("MemePictures", "The picture has too many pixels."),
        QT_TRANSLATE_NOOP("MemePictures", "The picture is damaged or cut off."),
        QT_TRANSLATE_NOOP(
            "MemePictures", "The part of Pobblewig that reads pictures is not installed.") };
    return QCoreApplication::translate("MemePictures", texts[size_t(problem)]);
}

} // namespace pobblewig::MemePictures
