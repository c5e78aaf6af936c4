#include "PobblewigDesktop/memory/ReferenceLogic.h"

#include "PobblewigDesktop/memory/SearchWords.h"

#include <QHash>

#include <ranges>

namespace pobblewig {

namespace {

using Nodes = std::vector<ReferenceNode>;

QString searched(const ReferenceItem& item)
{
    QStringList parts { item.title, item.summary };
    for (const auto& [key, value] : item.details)
        parts << key << value.displayString();
    return parts.join(u' ');
}

Nodes sorted(const std::vector<ReferenceSectionMeta>& sections)
{
    Nodes nodes;
    for (const auto& section : sections)
        nodes.push_back({ .section = section });
    std::ranges::sort(nodes, {},
        [](const auto& node) { return std::pair(node.section.confirmed, node.section.path); });
    return nodes;
}

QString above(const QString& path)
{
    return path.first(std::max(qsizetype(0), path.lastIndexOf(u'.')));
}

void setParents(Nodes& nodes)
{
    QHash<QString, size_t> places;
    for (size_t index = 0; index < nodes.size(); ++index) {
        auto& node = nodes[index];
        if (!node.section.confirmed)
            continue;
        places.insert(node.section.path, index);
        for (auto path = above(node.section.path); !path.isEmpty() && !node.parent;
             path = above(path)) {
            if (const auto found = places.constFind(path); found != places.cend())
                node.parent = *found;
        }
    }
}

void addItems(Nodes& nodes, const std::vector<ReferenceItem>& items, const SearchWords& words)
{
    QHash<QString, size_t> places;
    for (size_t index = 0; index < nodes.size(); ++index)
        places.insert(nodes[index].section.path, index);
    for (const auto& item : items) {
        const auto place = places.constFind(item.path);
        if (place != places.cend() && words.match(searched(item)))
            nodes[*place].items.push_back(item);
    }
    for (auto& node : nodes)
        std::ranges::stable_sort(node.items, std::greater(), &ReferenceItem::updatedAt);
}

/// Without the sections that have nothing of what is searched for.
Nodes pruned(const Nodes& nodes, const SearchWords& words)
{
    std::vector<bool> isKept(nodes.size());
    for (auto index = nodes.size(); index-- > 0;) {
        const auto& node = nodes[index];
        isKept[index] = isKept[index] || !node.items.empty() || words.match(node.section.title);
        if (isKept[index] && node.parent)
            isKept[*node.parent] = true;
    }
    Nodes kept;
    std::vector<size_t> places(nodes.size());
    for (size_t index = 0; index < nodes.size(); ++index) {
        if (!isKept[index])
            continue;
        places[index] = kept.size();
        kept.push_back(nodes[index]);
        if (kept.back().parent)
            kept.back().parent = places[*kept.back().parent];
    }
    return kept;
}

} // namespace

Nodes ReferenceLogic::tree(const std::vector<ReferenceSectionMeta>& sections,
    const std::vector<ReferenceItem>& items, const QString& words)
{
    const SearchWords wanted(words);
    auto nodes = sorted(sections);
    setParents(nodes);
    addItems(nodes, items, wanted);
    return pruned(nodes, wanted);
}

} // namespace pobblewig
