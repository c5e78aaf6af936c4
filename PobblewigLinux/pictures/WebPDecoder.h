#pragma once

#include "PobblewigLinux/pictures/PictureReel.h"

namespace pobblewig {

PictureResult decodeWebP(const QByteArray& bytes, const PictureLimits& limits);

} // namespace pobblewig
