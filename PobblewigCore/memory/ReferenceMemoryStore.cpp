#include "memory/ReferenceMemoryStore.h"

#include "foundation/Text.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <span>

namespace pobblewig {

namespace {

using ItemList = std::vector<const ReferenceItem*>;

struct Holding {
    int count = 0;
    std::optional<TimePoint> latest;
};

QHash<QString, Holding> holdingsByPath(const std::vector<ReferenceItem>& items)
{
    QHash<QString, Holding> holdings;
    for (const auto& item : items) {
        auto& holding = holdings[item.path];
        ++holding.count;
        if (!holding.latest || *holding.latest < item.updatedAt)
            holding.latest = item.updatedAt;
    }
    return holdings;
}

/// "academics" covers "academics.exams", but not "academicsExtra".
bool covers(const QString& root, const QString& path)
{
    return path.startsWith(root) && (path.size() == root.size() || path[root.size()] == u'.');
}

bool isCovered(const QString& path, const std::vector<QString>& roots)
{
    return roots.empty()
        || std::ranges::any_of(roots, [&](const auto& root) { return covers(root, path); });
}

QString searchableText(const ReferenceItem& item)
{
    QStringList parts { item.title, item.summary };
    for (const auto& [key, value] : item.details)
        parts << key << value.displayString();
    return parts.join(u' ');
}

/// Both point into one list. At the same instant, the one earlier in the list comes first.
bool comesFirst(const ReferenceItem* a, const ReferenceItem* b)
{
    return a->updatedAt == b->updatedAt ? a < b : a->updatedAt > b->updatedAt;
}

} // namespace

ReferenceMemoryStore::ReferenceMemoryStore(
    const std::optional<DataDirectory>& directory, const PlatformWording& wording)
    : m_file(directory, QStringLiteral("reference.json"), QStringLiteral("reference memory"))
    , m_fixedSections(ReferenceSections::fixed(wording))
    , m_data(m_file.load<ReferenceMemoryData>())
{
    addMissingSections();
}

MemoryTableOfContents ReferenceMemoryStore::tableOfContents() const
{
    const auto holdings = holdingsByPath(m_data.items);
    MemoryTableOfContents table;
    for (const auto& meta : m_data.sections) {
        if (!meta.confirmed)
            continue;
        const auto holding = holdings.value(meta.path);
        table.entries.push_back({
            .path = meta.path,
            .title = meta.title,
            .itemCount = holding.count,
            .summary = meta.summary,
            .lastUpdatedAt = holding.latest,
        });
    }
    std::ranges::stable_sort(table.entries, {}, &TOCEntry::path);
    return table;
}

std::vector<ReferenceSectionMeta> ReferenceMemoryStore::proposedSections() const
{
    std::vector<ReferenceSectionMeta> proposed;
    std::ranges::copy_if(m_data.sections, std::back_inserter(proposed), std::logical_not(),
        &ReferenceSectionMeta::confirmed);
    return proposed;
}

std::optional<ReferenceSection> ReferenceMemoryStore::readSection(const QString& path) const
{
    const auto* meta = section(path);
    if (!meta || !meta->confirmed)
        return std::nullopt;
    return ReferenceSection { .meta = *meta, .items = items(path) };
}

int ReferenceMemoryStore::countItems(const QString& path) const
{
    return int(std::ranges::count_if(
        m_data.items, [&](const auto& item) { return covers(path, item.path); }));
}

std::vector<ReferenceItem> ReferenceMemoryStore::items(const QString& path) const
{
    ItemList found;
    for (const auto& item : m_data.items) {
        if (item.path == path)
            found.push_back(&item);
    }
    std::ranges::sort(found, comesFirst);
    std::vector<ReferenceItem> items;
    items.reserve(found.size());
    for (const auto* item : found)
        items.push_back(*item);
    return items;
}

const ReferenceItem* ReferenceMemoryStore::itemTitled(
    const QString& path, const QString& title) const
{
    const auto& known = places();
    const auto found = known.constFind({ path, Text::normalized(title) });
    return found == known.cend() ? nullptr : &m_data.items[*found];
}

std::vector<ReferenceSearchResult> ReferenceMemoryStore::search(
    const QString& query, const std::vector<QString>& paths, int limit) const
{
    const auto tokens = SearchTexts::tokens(query);
    if (tokens.empty() || limit <= 0)
        return {};
    ItemList found;
    for (size_t index = 0; index < m_data.items.size(); ++index) {
        const auto& item = m_data.items[index];
        const auto text = [&] { return searchableText(item); };
        if (isCovered(item.path, paths) && m_searchTexts.match(index, tokens, text))
            found.push_back(&item);
    }
    const auto count = std::min(found.size(), size_t(limit));
    std::ranges::partial_sort(found, found.begin() + std::ptrdiff_t(count), comesFirst);
    std::vector<ReferenceSearchResult> results;
    results.reserve(count);
    for (const auto* item : std::span(found).first(count)) {
        const auto* meta = section(item->path);
        results.push_back({ .item = *item, .sectionTitle = meta ? meta->title : item->path });
    }
    return results;
}

std::optional<ReferenceSectionMeta> ReferenceMemoryStore::proposeSection(
    const QString& path, const QString& title, const QString& summary)
{
    if (!propose({ .path = path, .title = title, .summary = summary }))
        return std::nullopt;
    m_file.save(m_data);
    return m_data.sections.back();
}

void ReferenceMemoryStore::confirmSection(const QString& path)
{
    const auto found = std::ranges::find(m_data.sections, path, &ReferenceSectionMeta::path);
    if (found == m_data.sections.end())
        return;
    found->confirmed = true;
    m_file.save(m_data);
}

// Functions that remove records take a copy: the caller's path or id may be part of one of them.
void ReferenceMemoryStore::rejectSection(const QString& path)
{
    const auto isRejected = [path](const auto& meta) { return meta.path == path && meta.isCustom; };
    if (std::erase_if(m_data.sections, isRejected) == 0)
        return;
    if (removeItemsIf([path](const auto& item) { return item.path == path; }) == 0)
        m_file.save(m_data);
}

std::optional<ReferenceItem> ReferenceMemoryStore::upsertItem(ReferenceItem item)
{
    const auto* stored = put(std::move(item));
    if (!stored)
        return std::nullopt;
    m_file.save(m_data);
    return *stored;
}

Task<ReferenceFindings::Count> ReferenceMemoryStore::take(ReferenceFindings findings)
{
    ReferenceFindings::Count taken;
    const auto dropped = dropItems(findings.gone);
    for (auto& item : findings.items)
        taken.items += put(std::move(item)) != nullptr;
    for (const auto& section : findings.sections)
        taken.sections += propose(section);
    if (taken.items + taken.sections + dropped > 0)
        co_await m_file.saveBeside(m_data);
    co_return taken;
}

Task<> ReferenceMemoryStore::replaceItems(QString path, std::vector<ReferenceItem> items)
{
    if (itemsInOrder(path) == items)
        co_return;
    dropItems(path);
    std::ranges::move(items, std::back_inserter(m_data.items));
    co_await m_file.saveBeside(m_data);
}

void ReferenceMemoryStore::deleteItem(const QUuid& id)
{
    removeItemsIf([id](const auto& item) { return item.id == id; });
}

int ReferenceMemoryStore::deleteItems(const QString& path)
{
    return removeItemsIf([path](const auto& item) { return covers(path, item.path); });
}

void ReferenceMemoryStore::deleteAll()
{
    m_data = { .sections = m_fixedSections };
    m_searchTexts.forgetAll();
    m_places.reset();
    m_file.save(m_data);
}

void ReferenceMemoryStore::readAgain()
{
    auto kept = m_file.loadAgain<ReferenceMemoryData>();
    if (!kept)
        return;
    auto meanwhile = std::exchange(m_data, *std::move(kept));
    m_searchTexts.forgetAll();
    m_places.reset();
    for (const auto& recorded : meanwhile.sections) {
        if (!section(recorded.path))
            m_data.sections.push_back(recorded);
    }
    for (auto& item : meanwhile.items)
        put(std::move(item));
    m_file.save(m_data);
}

void ReferenceMemoryStore::addMissingSections()
{
    for (const auto& fixed : m_fixedSections) {
        if (!section(fixed.path))
            m_data.sections.push_back(fixed);
    }
}

const ReferenceSectionMeta* ReferenceMemoryStore::section(const QString& path) const
{
    const auto found = std::ranges::find(m_data.sections, path, &ReferenceSectionMeta::path);
    return found == m_data.sections.end() ? nullptr : &*found;
}

bool ReferenceMemoryStore::propose(const ReferenceSectionMeta& proposed)
{
    if (section(proposed.path))
        return false;
    m_data.sections.push_back(proposed);
    m_data.sections.back().isCustom = true;
    m_data.sections.back().confirmed = false;
    return true;
}

const ReferenceItem* ReferenceMemoryStore::put(ReferenceItem item)
{
    const auto* meta = section(item.path);
    if (!meta || !meta->confirmed)
        return nullptr;
    auto& known = places();
    const Place place(item.path, Text::normalized(item.title));
    const auto same = known.constFind(place);
    if (same == known.cend()) {
        known.insert(place, m_data.items.size());
        m_data.items.push_back(std::move(item));
        return &m_data.items.back();
    }
    auto& stored = m_data.items[*same];
    item.id = stored.id;
    item.createdAt = stored.createdAt;
    stored = std::move(item);
    m_searchTexts.forget(*same);
    return &stored;
}

std::vector<ReferenceItem> ReferenceMemoryStore::itemsInOrder(const QString& path) const
{
    std::vector<ReferenceItem> found;
    std::ranges::copy_if(m_data.items, std::back_inserter(found),
        [&](const auto& item) { return item.path == path; });
    return found;
}

auto ReferenceMemoryStore::places() const -> QHash<Place, size_t>&
{
    if (!m_places) {
        m_places.emplace();
        // Of several items at one place, which only an early file holds, the first counts.
        for (size_t index = m_data.items.size(); index-- > 0;) {
            const auto& item = m_data.items[index];
            m_places->insert({ item.path, Text::normalized(item.title) }, index);
        }
    }
    return *m_places;
}

int ReferenceMemoryStore::dropItems(const std::vector<QUuid>& ids)
{
    return dropItemsIf(
        [&](const auto& item) { return std::ranges::find(ids, item.id) != ids.end(); });
}

int ReferenceMemoryStore::dropItems(const QString& path)
{
    return dropItemsIf([&](const auto& item) { return item.path == path; });
}

int ReferenceMemoryStore::dropItemsIf(const std::function<bool(const ReferenceItem&)>& isUnwanted)
{
    const auto count = std::erase_if(m_data.items, isUnwanted);
    if (count > 0) {
        m_searchTexts.forgetAll();
        m_places.reset();
    }
    return int(count);
}

int ReferenceMemoryStore::removeItemsIf(const std::function<bool(const ReferenceItem&)>& isUnwanted)
{
    const auto count = dropItemsIf(isUnwanted);
    if (count > 0)
        m_file.save(m_data);
    return count;
}

} // namespace pobblewig
