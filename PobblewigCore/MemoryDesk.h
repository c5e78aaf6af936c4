#pragma once

#include "conversation/ChatService.h"
#include "conversation/proposals/ProposalManager.h"
#include "memory/MemoryTiers.h"
#include "memory/recall/MemoryRetrievalService.h"

namespace pobblewig {

/// What the user does to the memory by hand. Every change is published at once.
class MemoryDesk {
public:
    struct Dependencies {
        MemoryTiers& memory;
        ChatHistoryStore& history;
        ChatService& chat;
        MemoryRetrievalService& retrieval;
        ProposalManager& proposals;
        std::optional<DataDirectory> directory;
        std::function<Calendar()> calendar;
        Clock clock;
        /// Called after each change.
        std::function<void()> changed;
        /// Called before all memory goes: nothing under way may bring it back.
        std::function<void()> forgetting = [] {};
    };

    explicit MemoryDesk(Dependencies dependencies);

    /// Also removes a pattern of that id.
    void deleteNote(const QUuid& id);
    void correctNote(const QUuid& id, const QString& newText);
    void deleteObservation(const QUuid& id);
    void deleteReferenceItem(const QUuid& id);
    void confirmSection(const QString& path);
    void rejectSection(const QString& path);

    std::optional<ReferenceSection> readReferenceSection(const QString& path) const;
    Task<std::optional<ExpandedPeriod>> expandPeriod(QUuid id) const;
    QString exportMemoryText() const;

    /// Ends a turn in progress, empties every tier and the conversation, drops the proposals that
    /// quote them, removes all copies of them from the directory, and opens a fresh session.
    void deleteAllMemory();

private:
    Dependencies m;
};

} // namespace pobblewig
