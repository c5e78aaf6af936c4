#pragma once

#include "connections/CalendarDataProviding.h"
#include "conversation/ChatService.h"
#include "conversation/proposals/BuddyAction.h"
#include "conversation/proposals/ProposalAnswer.h"
#include "conversation/proposals/ProposalManager.h"
#include "conversation/proposals/ProposalWriter.h"
#include "memory/MemoryTiers.h"
#include "settings/ModeSwitch.h"

namespace pobblewig {

/// Puts before the user what the model wants to change, and carries out what the user allows. Every
/// outcome is told in the conversation, where the model reads it too.
class ProposalDesk {
public:
    /// Who carries out what the user allows.
    struct Hands {
        ChatService& chat;
        ModeSwitch& modes;
        CalendarDataProviding& calendarProvider;
    };

    /// All of it outlives the desk. `changed` is called after each change.
    ProposalDesk(const Stores& stores, const Moment& moment, const Hands& hands,
        std::function<void()> changed);

    /// What a finished turn asked for. At most `ProposalManager::maxPending` changes wait for the
    /// user; what comes on top is dropped, and the user is told.
    Task<> apply(std::vector<BuddyAction> actions);

    /// The user's three answers. An unknown `proposalId` changes nothing.
    Task<> confirmProposal(QString proposalId);
    void rejectProposal(const QString& proposalId);

    /// Confirms, and asks no more for changes of that kind, if the kind permits that.
    Task<> allowAlwaysProposal(QString proposalId);

    /// Any of them.
    Task<> answer(QString proposalId, ProposalAnswer answer);

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

    void noteWriteResult(const QString& text, RuleProposal::Kind kind);
    void noteSuccess(const QString& text, RuleProposal::Kind kind);
    void record(const QString& text, RuleProposal::Kind kind);

    Stores m;
    const Moment& m_moment;
    ChatService& m_chat;
    ModeSwitch& m_modes;
    ProposalWriter m_writer;
    std::function<void()> m_changed;
};

} // namespace pobblewig
