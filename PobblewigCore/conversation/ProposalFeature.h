#pragma once

#include "conversation/ProposalDesk.h"
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
