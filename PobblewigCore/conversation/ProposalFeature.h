#pragma once

#include "conversation/ProposalDesk.h"
#include "conversation/proposals/ActionTools.h"
#include "conversation/proposals/AnsweredProposal.h"
#include "features/Feature.h"

namespace pobblewig {

struct ProposalState {
    /// Proposals that await the user's answer, oldest first.
    std::vector<RuleProposal> pendingProposals;
    /// The latest ones that the user has answered.
    std::vector<AnsweredProposal> answered;

    bool operator==(const ProposalState&) const = default;
};

/// The changes that the model proposes, until the user answers.
class ProposalFeature : public Feature {
public:
    /// All arguments must outlive the feature.
    ProposalFeature(const Stores& stores, const Moment& moment, const ProposalDesk::Hands& hands)
        : m(stores)
        , m_calendarProvider(hands.calendarProvider)
        , m_desk(stores, moment, hands, [this] { changed(); })
    {
    }

    ProposalDesk& desk() { return m_desk; }

    std::vector<Tool> tools() override
    {
        using enum ActionTools::Calendars;
        return ActionTools::tools(m_calendarProvider.isAvailable() ? available : none);
    }

    void publish(PublishedState& state) const override
    {
        ProposalState published { m.proposals.pendingProposals(), {} };
        for (auto& proposal : m.proposals.settledProposals())
            published.answered.push_back({ proposal, m_desk.canBeUndone(proposal) });
        state.set(std::move(published));
    }

    /// What can be undone depends on what is in effect.
    int revision() const override
    {
        return Feature::revision() + m.proposals.revision() + m.settings.revision()
            + m.rules.revision();
    }

private:
    Stores m;
    const CalendarDataProviding& m_calendarProvider;
    ProposalDesk m_desk;
};

} // namespace pobblewig
