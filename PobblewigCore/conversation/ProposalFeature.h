#pragma once

#include "conversation/ProposalDesk.h"
#include "features/Feature.h"

namespace pobblewig {

struct ProposalState {
    /// Those that wait for the user's word, oldest first.
    std::vector<RuleProposal> pendingProposals;

    bool operator==(const ProposalState&) const = default;
};

/// What the model wants to change, until the user has answered.
class ProposalFeature : public Feature {
public:
    /// All of it outlives the feature.
    ProposalFeature(const Stores& stores, const Moment& moment, const ProposalDesk::Hands& hands)
        : m_proposals(stores.proposals)
        , m_desk(stores, moment, hands, [this] { changed(); })
    {
    }

    ProposalDesk& desk() { return m_desk; }

    void publish(PublishedState& state) const override
    {
        state.set(ProposalState { m_proposals.pendingProposals() });
    }

    int revision() const override { return Feature::revision() + m_proposals.revision(); }

private:
    const ProposalManager& m_proposals;
    ProposalDesk m_desk;
};

} // namespace pobblewig
