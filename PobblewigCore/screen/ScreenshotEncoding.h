#pragma once

#include "foundation/Task.h"

#include <QByteArray>
#include <QImage>

#include <optional>

namespace pobblewig::ScreenshotEncoding {

/// A JPEG file of the picture, scaled down so that its longer side is at most `maxDimension`
/// pixels; `quality` lies between 0 and 1. Nothing if the picture cannot be encoded.
std::optional<QByteArray> jpegData(const QImage& image, int maxDimension, double quality);

/// The JPEG file of a screenshot, made on a thread of the pool while the program goes on.
Task<std::optional<QByteArray>> screenshotData(QImage image);

} // namespace pobblewig::ScreenshotEncoding
