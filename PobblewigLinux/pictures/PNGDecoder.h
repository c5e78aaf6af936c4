#pragma once

#include "PobblewigLinux/pictures/PictureReel.h"

namespace pobblewig {

/// Decodes a PNG, animated or not. What a file carries beside its pixels and colours is not read.
PictureResult decodePNG(const QByteArray& bytes, const PictureLimits& limits);

} // namespace pobblewig
