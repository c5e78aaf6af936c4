#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "conversation/proposals/ActionVerdict.h"
#include "conversation/proposals/BuddyAction.h"
#include "features/Stores.h"
#include "foundation/Moment.h"
#include "settings/AppSettings.h"

#include <tl/expected.hpp>

#include <vector>

namespace pobblewig {

/// Judges the actions that a model requests by the present settings, memory and proposals. What the
/// model is told and what is done follow the same verdict.
class ActionJudge {
public:
    /// The maximum number of actions in a turn, however many a model requests.
    static constexpr size_t maxActions = 30;

    /// All arguments must outlive the judge.
    ActionJudge(
        const Stores& stores, const Moment& moment, const CalendarDataProviding& calendarProvider);

    /// `requested` are the actions of the same turn so far.
    ActionVerdict verdict(
        const BuddyAction& action, const std::vector<BuddyAction>& requested) const;

    /// The proposal as the user would see it, or why it cannot be carried out. It needs its
    /// `createdAt`.
    tl::expected<RuleProposal, QString> checked(
        RuleProposal proposal, const std::vector<BuddyAction>& requested = {}) const;

    /// The proposal that this one repeats: it waits for the user, or its outcome still holds.
    std::optional<RuleProposal> repeated(const RuleProposal& proposal) const;

    bool needsConfirmation(const RuleProposal& proposal) const;

private:
    std::optional<QString> settingRefusal(
        const RuleProposal& proposal, const std::vector<BuddyAction>& requested) const;
    AppSettings settingsWithForms(const std::vector<BuddyAction>& requested) const;
    bool isFull(const std::vector<BuddyAction>& requested) const;

    Stores m;
    const Moment& m_moment;
    const CalendarDataProviding& m_calendarProvider;
};

} // namespace pobblewig
