#pragma once

#include "memory/ReferenceItem.h"
#include "prompts/PlatformWording.h"

namespace pobblewig::ReferenceSections {

/// The sections that every reference memory has: not custom, and confirmed.
std::vector<ReferenceSectionMeta> fixed(const PlatformWording& wording);

} // namespace pobblewig::ReferenceSections
