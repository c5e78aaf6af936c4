#pragma once

#include "PobblewigLinux/pictures/PictureReel.h"

namespace pobblewig {

/// Composes the frames of a GIF as browsers do: what no frame covers is transparent, whatever
/// background the file names.
PictureResult decodeGIF(const QByteArray& bytes, const PictureLimits& limits);

} // namespace pobblewig
