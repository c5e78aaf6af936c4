#pragma once

#include "foundation/Task.h"

#include <QByteArray>
#include <QImage>

#include <optional>

namespace pobblewig::ScreenshotEncoding {

/// Encodes the picture as a JPEG file, scaled down so that its longer side is at most
/// `maxDimension` pixels. `quality` is between 0 and 1. Returns nothing if the picture cannot be
/// encoded.
std::optional<QByteArray> jpegData(const QImage& image, int maxDimension, double quality);

/// Encodes a screenshot as a JPEG file on a thread of the pool.
Task<std::optional<QByteArray>> screenshotData(QImage image);

} // namespace pobblewig::ScreenshotEncoding
