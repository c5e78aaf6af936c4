#pragma once

#include "PobblewigLinux/modules/ModuleLoader.h"
#include "memes/MemePictureDecoding.h"

#include <memory>

namespace pobblewig {

/// Decodes pictures by the module for them, which is loaded when it is first prepared. Before that,
/// and without the module, there is no decoder.
class LatePictureDecoder final : public MemePictureDecoding {
public:
    explicit LatePictureDecoder(const ModuleLoader& modules = ModuleLoader());

    std::optional<QString> prepare() override;

    tl::expected<MemeAnimation, MemePictureProblem> decode(const QByteArray& bytes) const override;

private:
    ModuleLoader m_modules;
    /// Set once, since other threads decode while this one prepares again.
    std::unique_ptr<const MemePictureDecoding> m_decoder;
    std::optional<QString> m_problem;
};

} // namespace pobblewig
