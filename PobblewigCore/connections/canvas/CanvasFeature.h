#pragma once

#include "features/Feature.h"
#include "memory/ReferenceMemoryStore.h"

namespace pobblewig {

/// The courses and deadlines of a Canvas site.
class CanvasFeature : public Feature {
public:
    /// `reference` must outlive the feature.
    explicit CanvasFeature(const ReferenceMemoryStore& reference);

    std::vector<QString> situation(TimePoint now) const override;

private:
    const ReferenceMemoryStore& m_reference;
};

} // namespace pobblewig
