#include "PobblewigDesktop/memory/ObservationLogic.h"

#include <QHash>

#include <algorithm>

namespace pobblewig {

QStringList ObservationLogic::commonTags(
    const std::vector<DatedObservation>& observations, size_t most)
{
    QHash<QString, int> counts;
    for (const auto& observation : observations) {
        for (const auto& tag : observation.tags)
            ++counts[tag.toLower()];
    }
    std::vector<std::pair<int, QString>> ranked;
    ranked.reserve(size_t(counts.size()));
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        ranked.emplace_back(-count.value(), count.key());
    std::ranges::sort(ranked);
    if (ranked.size() > most)
        ranked.resize(most);
    QStringList tags;
    for (const auto& [count, tag] : ranked)
        tags.append(tag);
    tags.sort();
    return tags;
}

} // namespace pobblewig
