#pragma once

#include "conversation/ProposalDesk.h"
#include "conversation/proposals/ActionTools.h"
#include "features/Feature.h"

namespace pobblewig {

struct ProposalState {
    /// Proposals that await the user's answer, oldest first.
    std::vector<RuleProposal> pendingProposals;

    bool operator==(const ProposalState&) const = default;
};

/// The changes that the model proposes, until the user answers.
class ProposalFeature : public Feature {
public:
    /// All arguments must outlive the feature.
    ProposalFeature(const Stores& stores, const Moment& moment, const ProposalDesk::Hands& hands)
        : m_proposals(stores.proposals)
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
        state.set(ProposalState { m_proposals.pendingProposals() });
    }

    int revision() const override { return Feature::revision() + m_proposals.revision(); }

private:
    const ProposalManager& m_proposals;
    const CalendarDataProviding& m_calendarProvider;
    ProposalDesk m_desk;
};

} // namespace pobblewig
