#pragma once

#include "PobblewigLinux/pictures/PictureReel.h"

namespace pobblewig {

/// Decodes a JPEG, turned upright. A picture that is only damaged in part is broken.
PictureResult decodeJPEG(const QByteArray& bytes, const PictureLimits& limits);

} // namespace pobblewig
