#pragma once

#include "connections/CalendarDataProviding.h"
#include "conversation/ChatService.h"
#include "conversation/proposals/BuddyAction.h"
#include "conversation/proposals/ProposalManager.h"
#include "conversation/proposals/ProposalWriter.h"
#include "foundation/Calendar.h"
#include "memory/MemoryTiers.h"
#include "settings/ModeSwitch.h"

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

    /// What a finished turn asked for. At most `ProposalManager::maxPending` changes wait for the
    /// user; what comes on top is dropped, and the user is told.
    Task<> apply(std::vector<BuddyAction> actions);

    /// The user's three answers. An unknown `proposalId` changes nothing.
    Task<> confirmProposal(QString proposalId);
    void rejectProposal(const QString& proposalId);

    /// Confirms, and asks no more for changes of that kind, if the kind permits that.
    Task<> allowAlwaysProposal(QString proposalId);

private:
    enum class Admission { admitted, tooMany };

    Task<Admission> applyOne(BuddyAction action);
    Task<Admission> handleWrite(RuleProposal proposal);
    Admission queue(const RuleProposal& proposal);
    Task<Admission> writeUnasked(RuleProposal proposal);
    void askNoMore(const QString& actionClass);

    /// Also against the form that the buddy would have if the user agreed to a waiting change.
    std::optional<QString> settingRefusal(const RuleProposal& proposal) const;
    AppSettings settingsWithWaitingForm() const;

    Task<> confirmRule(RuleProposal proposal);
    Task<> confirmWrite(RuleProposal proposal);
    ProposalManager::Execute writing(const std::shared_ptr<ProposalWriter::Outcome>& outcome);
    Task<ProposalManager::Execution> execute(
        RuleProposal proposal, std::shared_ptr<ProposalWriter::Outcome> outcome);

    void noteProposalState(const QString& text);
    void noteWriteResult(const QString& text, RuleProposal::Kind kind);
    void noteSuccess(const QString& text, RuleProposal::Kind kind);
    void record(const QString& text, RuleProposal::Kind kind);

    Dependencies m;
    ProposalWriter m_writer;
};

} // namespace pobblewig
