#pragma once

#include "ModeSwitch.h"
#include "connections/CalendarDataProviding.h"
#include "conversation/BuddyAction.h"
#include "conversation/ChatService.h"
#include "conversation/ProposalManager.h"
#include "foundation/Calendar.h"
#include "memory/MemoryTiers.h"

namespace pobblewig {

/// Puts before the user what the model wants to change, and carries out what the user allows. Every
/// outcome is told in the conversation, where the model reads it too.
class ProposalDesk {
public:
    /// All of it outlives the desk.
    struct Dependencies {
        ProposalManager& proposals;
        SettingsStore& settings;
        RuleStore& rules;
        MemoryTiers& memory;
        ChatHistoryStore& history;
        ChatService& chat;
        ModeSwitch& modes;
        CalendarDataProviding& calendarProvider;
        std::function<Calendar()> calendar;
        Clock clock;
        /// Called after each change.
        std::function<void()> changed;
    };

    explicit ProposalDesk(Dependencies dependencies);

    /// What a finished turn asked for.
    Task<> apply(std::vector<BuddyAction> actions);

    /// The user's three answers. An unknown `proposalId` changes nothing.
    Task<> confirmProposal(QString proposalId);
    void rejectProposal(const QString& proposalId);

    /// Confirms, and asks no more for changes of that kind, if the kind permits that.
    Task<> allowAlwaysProposal(QString proposalId);

private:
    Dependencies m;
};

} // namespace pobblewig
