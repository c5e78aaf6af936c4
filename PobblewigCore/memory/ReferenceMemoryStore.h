#pragma once

#include "foundation/StoreFile.h"
#include "memory/MemoryTableOfContents.h"
#include "memory/ReferenceSection.h"
#include "memory/ReferenceSections.h"
#include "memory/SearchTexts.h"

#include <QHash>

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// What a reader found for the reference memory.
struct ReferenceFindings {
    /// How many were taken.
    struct Count {
        int items = 0;
        int sections = 0;
    };

    std::vector<ReferenceItem> items;
    std::vector<ReferenceSectionMeta> sections;
    /// Items that are no longer true. They are removed before the others are taken.
    std::vector<QUuid> gone = {};
};

/// Structured facts that are looked up on demand, kept in "reference.json".
///
/// Lives on the main thread. Without a directory it works in memory only. Unknown paths and ids
/// change nothing.
class ReferenceMemoryStore {
public:
    /// The fixed sections exist from the first start.
    ReferenceMemoryStore(
        const std::optional<DataDirectory>& directory, const PlatformWording& wording);

    MemoryTableOfContents tableOfContents() const;

    /// Sections that await the user's confirmation.
    std::vector<ReferenceSectionMeta> proposedSections() const;

    /// Returns nothing for an unknown or unconfirmed section.
    std::optional<ReferenceSection> readSection(const QString& path) const;
    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    const std::vector<ReferenceItem>& allItems() const { return m_data.items; }

    /// Confirmed or not.
    const std::vector<ReferenceSectionMeta>& allSections() const { return m_data.sections; }

    /// Counts the items at this path and below it.
    int countItems(const QString& path) const;

    /// The items at exactly this path, newest first.
    std::vector<ReferenceItem> items(const QString& path) const;

    /// The item that `upsertItem` would replace, or null. Valid until the next change.
    const ReferenceItem* itemTitled(const QString& path, const QString& title) const;

    /// The items that contain every word of the query, newest first. If `paths` are given, only
    /// items at or below them are searched. A query without words finds nothing.
    std::vector<ReferenceSearchResult> search(
        const QString& query, const std::vector<QString>& paths, int limit) const;

    /// Returns nothing if a section with this path exists, confirmed or not.
    std::optional<ReferenceSectionMeta> proposeSection(
        const QString& path, const QString& title, const QString& summary);
    void confirmSection(const QString& path);

    /// Removes a custom section with its items. A fixed section stays.
    void rejectSection(const QString& path);

    /// Adds the item, or replaces the one with the same path and title, ignoring case and spacing;
    /// its id and creation date stay. Without a confirmed section for the path, drops the item and
    /// returns nothing.
    std::optional<ReferenceItem> upsertItem(ReferenceItem item);

    /// The same for several items, and a proposal for each section, at once. The task ends when
    /// they are on disk.
    Task<ReferenceFindings::Count> take(ReferenceFindings findings);

    /// Makes the items at exactly this path equal to the given ones, which may share a title.
    /// Writes nothing if they are. The task ends when they are on disk.
    Task<> replaceItems(QString path, std::vector<ReferenceItem> items);
    void deleteItem(const QUuid& id);

    /// Removes the items at this path and below it. Returns their number.
    int deleteItems(const QString& path);
    void deleteAll();

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    /// A path and a normalised title.
    using Place = std::pair<QString, QString>;

    void addMissingSections();
    bool propose(const ReferenceSectionMeta& section);
    const ReferenceItem* put(ReferenceItem item);
    QHash<Place, size_t>& places() const;
    std::vector<ReferenceItem> itemsInOrder(const QString& path) const;
    const ReferenceSectionMeta* section(const QString& path) const;
    int dropItems(const std::vector<QUuid>& ids);
    int dropItems(const QString& path);
    int dropItemsIf(const std::function<bool(const ReferenceItem&)>& isUnwanted);
    int removeItemsIf(const std::function<bool(const ReferenceItem&)>& isUnwanted);

    StoreFile m_file;
    std::vector<ReferenceSectionMeta> m_fixedSections;
    ReferenceMemoryData m_data;
    /// The indices of the items; reset when items move, until the next addition needs it.
    mutable std::optional<QHash<Place, size_t>> m_places;
    mutable SearchTexts m_searchTexts;
};

} // namespace pobblewig
