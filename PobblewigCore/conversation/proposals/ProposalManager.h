#pragma once

#include "activity/RuleStore.h"
#include "conversation/proposals/RuleProposal.h"
#include "foundation/StoreFile.h"
#include "foundation/Task.h"

#include <functional>
#include <set>

namespace pobblewig {

/// What became of a confirmation.
struct ConfirmResult {
    enum class Kind { created, duplicate, failed, notFound };

    Kind kind = Kind::notFound;
    /// What was created, or had been.
    QUuid ruleID = {};
    /// Why it failed, for the user.
    QString reason = {};

    bool operator==(const ConfirmResult&) const = default;
};

/// The changes that wait for the user's word, and the latest that have had it, kept in
/// "proposals.json". A proposal leaves the pending ones once and never returns.
///
/// Lives on the main thread. Without a directory it works in memory only.
class ProposalManager {
public:
    static constexpr size_t maxPending = 10;
    static constexpr size_t maxSettled = 100;

    /// The whole of "proposals.json".
    struct SavedState {
        /// In the order of their arrival.
        std::vector<RuleProposal> proposals;
        /// What each confirmed proposal created.
        std::map<QString, QUuid> ledger;

        bool operator==(const SavedState&) const = default;

        static constexpr auto jsonFields()
        {
            using namespace json;
            return std::tuple { required("proposals", &SavedState::proposals),
                defaulted("ledger", &SavedState::ledger) };
        }
    };

    using Execution = tl::expected<QUuid, QString>;
    using Execute = std::function<Task<Execution>(RuleProposal)>;

    explicit ProposalManager(const std::optional<DataDirectory>& directory);

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    /// In the order of their creation.
    std::vector<RuleProposal> pendingProposals() const;
    std::optional<RuleProposal> proposal(const QString& proposalId) const;

    /// Whether the user has not been asked for this yet.
    bool isNew(const RuleProposal& proposal) const;

    /// Whether so many are waiting that no further one is to be registered.
    bool isFull() const { return pendingProposals().size() >= maxPending; }

    /// What was queued, under a new `proposalId` if another request had that one; nothing if the
    /// user has been asked for this already.
    std::optional<RuleProposal> registerProposal(RuleProposal proposal);

    /// Carries a proposal out, at most once. One that fails stays pending; one that is being
    /// carried out counts as a duplicate.
    Task<ConfirmResult> confirm(QString proposalId, Execute execute);

    /// Of a rule.
    Task<ConfirmResult> confirm(QString proposalId, RuleStore& ruleStore, TimePoint now);

    /// Whether it was: one that is unknown, settled or being carried out is not.
    bool reject(const QString& proposalId);

    /// Removes what names texts of the memory, whatever became of it.
    void dropForgets();

private:
    RuleProposal* find(const QString& proposalId);
    void settleAsConfirmed(const RuleProposal& meant, const QUuid& created);
    void settle(RuleProposal& proposal, RuleProposal::Status status);
    void pruneSettled();
    size_t removeIf(const std::function<bool(const RuleProposal&)>& isUnwanted);

    StoreFile m_file;
    SavedState m_state;
    std::set<QString> m_underWay;
};

} // namespace pobblewig
