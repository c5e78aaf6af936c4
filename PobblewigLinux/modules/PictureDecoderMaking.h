#pragma once

#include "memes/MemePictureDecoding.h"

#include <QtPlugin>

#include <memory>

namespace pobblewig {

/// What the module "pictures" is for.
class PictureDecoderMaking {
public:
    virtual ~PictureDecoderMaking() = default;

    virtual std::unique_ptr<MemePictureDecoding> makePictureDecoder() = 0;
};

} // namespace pobblewig

Q_DECLARE_INTERFACE(pobblewig::PictureDecoderMaking, "com.pobblewig.PictureDecoderMaking")
