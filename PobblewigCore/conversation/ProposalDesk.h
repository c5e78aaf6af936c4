#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "conversation/ActionJudge.h"
#include "conversation/ChatService.h"
#include "conversation/proposals/BuddyAction.h"
#include "conversation/proposals/ProposalAnswer.h"
#include "conversation/proposals/ProposalManager.h"
#include "conversation/proposals/ProposalWriter.h"
#include "memory/MemoryTiers.h"
#include "settings/ModeSwitch.h"

namespace pobblewig {

/// Asks the user about changes that the model proposes, and carries out those that are allowed.
/// Every outcome is reported in the conversation, where the model reads it as well.
class ProposalDesk {
public:
    /// The objects that carry out allowed changes.
    struct Hands {
        ChatService& chat;
        ModeSwitch& modes;
        CalendarDataProviding& calendarProvider;
        /// Called before something is forgotten, so that nothing in progress restores it.
        std::function<void()> forgetting;
        /// Called once something was added to the calendars.
        std::function<void()> calendarChanged = [] {};
    };

    /// All arguments must outlive the desk. `changed` is called after each change.
    ProposalDesk(const Stores& stores, const Moment& moment, const Hands& hands,
        std::function<void()> changed);

    /// What would become of an action at the end of the turn that has requested these so far.
    ActionVerdict verdict(
        const BuddyAction& action, const std::vector<BuddyAction>& requested) const
    {
        return m_judge.verdict(action, requested);
    }

    /// Handles the actions of a finished turn. At most `ProposalManager::maxPending` changes wait
    /// for the user; further ones are dropped, and the user is told.
    Task<> apply(std::vector<BuddyAction> actions);

    /// The user's three answers. An unknown `proposalId` changes nothing.
    Task<> confirmProposal(QString proposalId);
    void rejectProposal(const QString& proposalId);

    /// Confirms, and stops asking about changes of that kind if the kind permits it.
    Task<> allowAlwaysProposal(QString proposalId);

    /// Takes back a confirmed change, if `canBeUndone` says so.
    void undoProposal(const QString& proposalId);
    bool canBeUndone(const RuleProposal& proposal) const;

    /// Gives any of the three answers.
    Task<> answer(QString proposalId, ProposalAnswer answer);

private:
    enum class Admission { admitted, tooMany };

    Task<Admission> applyOne(BuddyAction action);
    Admission queue(const RuleProposal& proposal);
    Task<Admission> writeUnasked(RuleProposal proposal);

    Task<> confirmRule(RuleProposal proposal);
    Task<> confirmWrite(RuleProposal proposal);
    ProposalManager::Execute writing(const std::shared_ptr<ProposalWriter::Outcome>& outcome);
    Task<ProposalManager::Execution> execute(
        RuleProposal proposal, std::shared_ptr<ProposalWriter::Outcome> outcome);

    void restore(const RuleProposal& proposal);

    /// What tells of a deletion names what was deleted, so no librarian reads it.
    void tell(const QString& text, const RuleProposal& about);
    void noteFailure(const QString& text, RuleProposal::Kind kind);
    void noteSuccess(const QString& text, const RuleProposal& about);
    void record(const QString& text, RuleProposal::Kind kind);

    Stores m;
    const Moment& m_moment;
    ChatService& m_chat;
    ModeSwitch& m_modes;
    ActionJudge m_judge;
    ProposalWriter m_writer;
    std::function<void()> m_forgetting;
    std::function<void()> m_calendarChanged;
    std::function<void()> m_changed;
};

} // namespace pobblewig
