#include "screen/ScreenshotEncoding.h"

#include "screen/ScreenCaptureLogic.h"

#include <QBuffer>
#include <QCoroFuture>
#include <QImageWriter>
#include <QPainter>
#include <QtConcurrent>

namespace pobblewig {

namespace {

QImage resized(const QImage& image, QSize size)
{
    if (image.isNull() || image.size() == size)
        return image;
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// Renders transparency as it would look on black, since a JPEG has none.
QImage opaque(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::black);
    QPainter(&flat).drawImage(0, 0, image);
    return flat;
}

std::optional<QByteArray> encodedScreenshot(const QImage& image)
{
    return ScreenshotEncoding::jpegData(
        resized(image, ScreenCaptureLogic::targetSize(image.size())),
        ScreenCaptureLogic::maxDimension, ScreenCaptureLogic::jpegQuality);
}

} // namespace

std::optional<QByteArray> ScreenshotEncoding::jpegData(
    const QImage& image, int maxDimension, double quality)
{
    const auto fits = std::max(image.width(), image.height()) <= maxDimension;
    const auto scaled =
        fits ? image : resized(image, ScreenCaptureLogic::targetSize(image.size(), maxDimension));
    QBuffer buffer;
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(qRound(quality * 100));
    if (scaled.isNull() || !writer.write(opaque(scaled)))
        return std::nullopt;
    return buffer.data();
}

Task<std::optional<QByteArray>> ScreenshotEncoding::screenshotData(QImage image)
{
    co_return co_await QtConcurrent::run(encodedScreenshot, std::move(image));
}

} // namespace pobblewig
