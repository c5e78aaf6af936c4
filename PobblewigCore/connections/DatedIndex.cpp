#include "connections/DatedIndex.h"

#include "connections/DatedItems.h"

#include <algorithm>

namespace pobblewig {

std::vector<ReferenceItem> DatedIndex::within(
    const ReferenceMemoryStore& reference, TimePoint from, TimePoint to, size_t limit)
{
    learn(reference);
    const auto date = &std::pair<TimePoint, size_t>::first;
    std::vector<ReferenceItem> found;
    for (auto entry = std::ranges::upper_bound(m_dates, from, {}, date);
         entry != m_dates.end() && entry->first <= to && found.size() < limit; ++entry)
        found.push_back(reference.allItems()[entry->second]);
    return found;
}

void DatedIndex::learn(const ReferenceMemoryStore& reference)
{
    if (m_knownRevision == reference.revision())
        return;
    m_knownRevision = reference.revision();
    m_dates.clear();
    const auto& items = reference.allItems();
    for (size_t place = 0; place < items.size(); ++place) {
        if (items[place].path != m_path)
            continue;
        if (const auto date = DatedItems::date(items[place], m_key))
            m_dates.emplace_back(*date, place);
    }
    std::ranges::sort(m_dates);
}

} // namespace pobblewig
