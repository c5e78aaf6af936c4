#pragma once

#include "PobblewigLinux/modules/PictureDecoderMaking.h"

#include <QObject>

namespace pobblewig {

/// Each format of pictures brings a library along, and nobody needs them before the first meme.
class PicturesModule final : public QObject, public PictureDecoderMaking {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.pobblewig.PictureDecoderMaking")
    Q_INTERFACES(pobblewig::PictureDecoderMaking)

public:
    std::unique_ptr<MemePictureDecoding> makePictureDecoder() override;
};

} // namespace pobblewig
