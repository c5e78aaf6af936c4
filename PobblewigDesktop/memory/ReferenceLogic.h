#pragma once

#include "memory/ReferenceItem.h"

#include <optional>
#include <vector>

namespace pobblewig {

/// A section in the tree of the reference memory.
struct ReferenceNode {
    ReferenceSectionMeta section;
    /// The index of the section above it, which comes earlier.
    std::optional<size_t> parent = std::nullopt;
    /// Newest first.
    std::vector<ReferenceItem> items = {};
};

namespace ReferenceLogic {

/// The proposed sections first, then the others, each below the nearest one of whose path its own
/// is a part. With words, only the items that have them, with their sections and those above, and
/// the sections whose title has them.
std::vector<ReferenceNode> tree(const std::vector<ReferenceSectionMeta>& sections,
    const std::vector<ReferenceItem>& items, const QString& words);

} // namespace ReferenceLogic

} // namespace pobblewig
