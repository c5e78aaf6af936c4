#include "PobblewigLinux/modules/LatePictureDecoder.h"

#include "PobblewigLinux/modules/PictureDecoderMaking.h"

namespace pobblewig {

LatePictureDecoder::LatePictureDecoder(const ModuleLoader& modules)
    : m_modules(modules)
{
}

std::optional<QString> LatePictureDecoder::prepare()
{
    if (m_decoder || m_problem)
        return m_problem;
    const auto module = m_modules.load<PictureDecoderMaking>(QStringLiteral("pictures"));
    if (module)
        m_decoder = (*module)->makePictureDecoder();
    else
        m_problem = module.error();
    return m_problem;
}

tl::expected<MemeAnimation, MemePictureProblem> LatePictureDecoder::decode(
    const QByteArray& bytes) const
{
    return m_decoder ? m_decoder->decode(bytes) : tl::unexpected(MemePictureProblem::noDecoder);
}

} // namespace pobblewig
