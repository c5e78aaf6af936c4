#pragma once

#include "memory/ReferenceItem.h"
#include "prompts/PlatformWording.h"

namespace pobblewig::ReferenceSections {

/// The built-in sections of every reference memory, which are not custom and already confirmed.
std::vector<ReferenceSectionMeta> fixed(const PlatformWording& wording);

} // namespace pobblewig::ReferenceSections
