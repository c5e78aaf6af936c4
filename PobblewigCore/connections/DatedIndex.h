#pragma once

#include "memory/ReferenceMemoryStore.h"

namespace pobblewig {

/// The items of one section in the order of their dates, so that a few days are found among many
/// years. Learns them anew once the reference memory has changed.
class DatedIndex {
public:
    /// `key` is that of the date in the details. Both are literals.
    DatedIndex(QStringView path, QStringView key)
        : m_path(path)
        , m_key(key)
    {
    }

    /// Those after `from`, up to `to` itself, at most so many. Soonest first; items with the same
    /// date keep their order.
    std::vector<ReferenceItem> within(
        const ReferenceMemoryStore& reference, TimePoint from, TimePoint to, size_t limit);

private:
    void learn(const ReferenceMemoryStore& reference);

    QStringView m_path;
    QStringView m_key;
    std::optional<int> m_knownRevision;
    /// With the place in the reference memory.
    std::vector<std::pair<TimePoint, size_t>> m_dates;
};

} // namespace pobblewig
