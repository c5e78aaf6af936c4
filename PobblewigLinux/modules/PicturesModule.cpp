#include "PobblewigLinux/modules/PicturesModule.h"

#include "PobblewigLinux/pictures/PictureDecoder.h"

namespace pobblewig {

std::unique_ptr<MemePictureDecoding> PicturesModule::makePictureDecoder()
{
    return std::make_unique<PictureDecoder>();
}

} // namespace pobblewig
