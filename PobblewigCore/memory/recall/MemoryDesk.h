#pragma once

#include "features/Stores.h"
#include "foundation/DataDirectory.h"
#include "foundation/Moment.h"
#include "memory/MemoryTiers.h"
#include "memory/recall/MemoryRetrievalService.h"

namespace pobblewig {

/// The user's own changes to memory. Every change is published at once.
class MemoryDesk {
public:
    /// Everything here must outlive the desk.
    struct Dependencies {
        const Stores& stores;
        const Moment& moment;
        MemoryRetrievalService& retrieval;
        std::optional<DataDirectory> directory;
        /// Called after each change.
        std::function<void()> changed;
        /// Called before an entry is deleted, so that nothing in progress restores it.
        std::function<void()> deleting;
        /// Called before and after all memory is deleted, so that nothing in progress restores it
        /// and every quotation of it elsewhere is dropped.
        std::function<void()> forgetting;
        std::function<void()> forgotten;
    };

    explicit MemoryDesk(Dependencies dependencies);

    /// Also removes a pattern with that id.
    void deleteNote(const QUuid& id);
    void correctNote(const QUuid& id, const QString& newText);
    /// Makes an archived or superseded note active again.
    void reviveNote(const QUuid& id);
    void deleteObservation(const QUuid& id);
    void deleteReferenceItem(const QUuid& id);

    /// Each takes back a change of this entry, or its deletion.
    void putBack(const MemoryNote& note);
    void putBack(const PatternNote& pattern);
    void putBack(const DatedObservation& observation);
    void putBack(const ReferenceItem& item);
    /// As a proposal.
    void putBack(const ReferenceSectionMeta& section);

    void confirmSection(const QString& path);
    void rejectSection(const QString& path);

    std::optional<ReferenceSection> readReferenceSection(const QString& path) const;
    Task<std::optional<ExpandedPeriod>> expandPeriod(QUuid id) const;
    QString exportMemoryText() const;

    /// All that is remembered, as a file for people and as one for programs.
    QByteArray exportMarkdown() const;
    QByteArray exportJSON() const;

    /// Empties every tier and the conversation, removes all copies of them from the directory, and
    /// opens a new session.
    void deleteAllMemory();

private:
    Dependencies m;
    MemoryTiers& m_memory;
};

} // namespace pobblewig
