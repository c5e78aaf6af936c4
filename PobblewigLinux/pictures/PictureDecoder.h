#pragma once

#include "PobblewigLinux/pictures/PictureReel.h"

namespace pobblewig {

/// Decodes pictures with the libraries of their formats.
class PictureDecoder final : public MemePictureDecoding {
public:
    explicit PictureDecoder(const PictureLimits& limits = {});

    PictureResult decode(const QByteArray& bytes) const override;

private:
    PictureLimits m_limits;
};

} // namespace pobblewig
