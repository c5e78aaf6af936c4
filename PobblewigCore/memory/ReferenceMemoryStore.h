#pragma once

#include "foundation/StoreFile.h"
#include "memory/MemoryTableOfContents.h"
#include "memory/ReferenceSection.h"
#include "memory/ReferenceSections.h"
#include "memory/SearchTexts.h"

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// Structured facts that are looked up when they are needed, kept in "reference.json".
///
/// Lives on the main thread. Without a directory it works in memory only. Unknown paths and ids
/// change nothing.
class ReferenceMemoryStore {
public:
    /// The fixed sections are there from the first start.
    explicit ReferenceMemoryStore(
        const std::optional<DataDirectory>& directory, const PlatformWording& wording);

    MemoryTableOfContents tableOfContents() const;

    /// Those that wait for the user's word.
    std::vector<ReferenceSectionMeta> proposedSections() const;

    /// Nothing for an unknown or unconfirmed section.
    std::optional<ReferenceSection> readSection(const QString& path) const;
    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    const std::vector<ReferenceItem>& allItems() const { return m_data.items; }

    /// Of the path and beneath it.
    int countItems(const QString& path) const;

    /// Of exactly this path, newest first.
    std::vector<ReferenceItem> items(const QString& path) const;

    /// Items that hold every word of the query, newest first. `paths`, if there are any, admit
    /// their own items and those beneath them. A query without a word finds nothing.
    std::vector<ReferenceSearchResult> search(
        const QString& query, const std::vector<QString>& paths, int limit) const;

    /// Nothing if there is a section of this path, confirmed or not.
    std::optional<ReferenceSectionMeta> proposeSection(
        const QString& path, const QString& title, const QString& summary);
    void confirmSection(const QString& path);

    /// Removes a custom section with its items; a fixed one stays.
    void rejectSection(const QString& path);

    /// Replaces the item of the same path and title, case and spacing aside, which keeps its id and
    /// its date of creation; else adds it. Nothing, and the item is dropped, without a confirmed
    /// section of its path.
    std::optional<ReferenceItem> upsertItem(ReferenceItem item);
    void deleteItem(const QUuid& id);

    /// The items of the path and beneath it. How many went.
    int deleteItems(const QString& path);
    void deleteAll();

private:
    void addMissingSections();
    const ReferenceSectionMeta* section(const QString& path) const;
    int removeItemsIf(const std::function<bool(const ReferenceItem&)>& isUnwanted);

    StoreFile m_file;
    std::vector<ReferenceSectionMeta> m_fixedSections;
    ReferenceMemoryData m_data;
    mutable SearchTexts m_searchTexts;
};

} // namespace pobblewig
