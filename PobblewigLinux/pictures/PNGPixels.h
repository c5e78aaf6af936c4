#pragma once

#include <QImage>

namespace pobblewig {

/// Decodes a still PNG of a known size to the colors of a screen, without premultiplication. Null
/// if that fails. What a file holds beyond its last row is not unpacked.
QImage decodePNGPixels(QSize size, const QByteArray& file);

} // namespace pobblewig
