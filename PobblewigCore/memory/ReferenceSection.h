#pragma once

#include "memory/ReferenceItem.h"

namespace pobblewig {

/// A section as it is read, with its items newest first.
struct ReferenceSection {
    ReferenceSectionMeta meta;
    std::vector<ReferenceItem> items;

    /// Title, summary and one line for each item, for the model.
    QString compactText() const;
};

struct ReferenceSearchResult {
    ReferenceItem item;
    QString sectionTitle;
};

/// " [course=Physics, due=2026-03-01]", sorted by key; empty without details.
QString detailsText(const ReferenceItem& item);

} // namespace pobblewig
