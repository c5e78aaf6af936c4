#pragma once

#include "activity/RuleStore.h"
#include "conversation/proposals/ProposalLogic.h"
#include "conversation/proposals/RuleProposal.h"
#include "foundation/StoreFile.h"
#include "foundation/Task.h"

#include <functional>
#include <set>

namespace pobblewig {

/// The outcome of a confirmation.
struct ConfirmResult {
    enum class Kind { created, duplicate, failed, notFound };

    Kind kind = Kind::notFound;
    /// The object that was created, now or earlier.
    QUuid ruleID = {};
    /// Why it failed, as text for the user.
    QString reason = {};

    bool operator==(const ConfirmResult&) const = default;
};

/// The changes that await the user's answer and the latest answered ones, kept in "proposals.json".
/// A proposal stops being pending once and never becomes pending again.
///
/// Lives on the main thread. Without a directory it works in memory only.
class ProposalManager {
public:
    static constexpr size_t maxPending = 10;
    static constexpr size_t maxSettled = 100;

    /// The contents of "proposals.json".
    struct SavedState {
        /// In the order in which they were registered.
        std::vector<RuleProposal> proposals;
        /// The object that each confirmed proposal created.
        std::map<QString, QUuid> ledger;

        bool operator==(const SavedState&) const = default;

        static constexpr auto jsonFields()
        {
            using namespace json;
            return std::tuple { required("proposals", &SavedState::proposals),
                defaulted("ledger", &SavedState::ledger) };
        }
    };

    /// What a change has done.
    struct Executed {
        QUuid created;
        /// The settings that it replaced.
        std::optional<std::map<QString, JSONValue>> replaced = std::nullopt;
    };
    using Execution = tl::expected<Executed, QString>;
    using Execute = std::function<Task<Execution>(RuleProposal)>;

    explicit ProposalManager(
        const std::optional<DataDirectory>& directory, Clock clock = systemNow);

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    /// In the order of their creation.
    std::vector<RuleProposal> pendingProposals() const;

    /// Those that the user has answered.
    std::vector<RuleProposal> settledProposals() const;
    std::optional<RuleProposal> proposal(const QString& proposalId) const;

    /// The proposal that this one repeats, by `ProposalLogic::repeated`.
    std::optional<RuleProposal> repeated(
        const RuleProposal& proposal, const ProposalLogic::Standing& standing) const;

    /// Whether the maximum number of proposals is pending.
    bool isFull() const { return pendingProposals().size() >= maxPending; }

    /// Returns the registered proposal, with a new `proposalId` if another request already has that
    /// one. One that repeats another must not be registered.
    RuleProposal registerProposal(RuleProposal proposal);

    /// Carries a proposal out, at most once. A failed one stays pending; one in progress counts as
    /// a duplicate.
    Task<ConfirmResult> confirm(QString proposalId, Execute execute);

    /// Confirms a rule.
    Task<ConfirmResult> confirm(QString proposalId, RuleStore& ruleStore, TimePoint now);

    /// Returns whether it was rejected. An unknown, settled or executing proposal cannot be.
    bool reject(const QString& proposalId);

    /// The object that a confirmed proposal created.
    std::optional<QUuid> created(const QString& proposalId) const;

    /// Keeps that the user has taken a confirmed proposal back.
    void noteUndone(const QString& proposalId);

    /// Removes all requests to forget, whatever their status, since they quote memory.
    void dropForgets();

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    RuleProposal* find(const QString& proposalId);
    void settleAsConfirmed(const RuleProposal& meant, Executed executed);
    void settle(RuleProposal& proposal, RuleProposal::Status status);
    void pruneSettled();
    size_t removeIf(const std::function<bool(const RuleProposal&)>& isUnwanted);

    StoreFile m_file;
    Clock m_clock;
    SavedState m_state;
    std::set<QString> m_underWay;
};

} // namespace pobblewig
