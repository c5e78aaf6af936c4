#pragma once

#include "activity/RuleEngine.h"
#include "foundation/StoreFile.h"
#include "foundation/Task.h"
#include "interventions/InterventionRecord.h"

namespace pobblewig {

/// The record of what the companion said unprompted, kept in "interventions.json".
///
/// Lives on the main thread. Without a directory it works in memory only.
class InterventionService {
public:
    /// The text of a message about a rule and the seconds for which it matched, or why there is
    /// none.
    using Compose = std::function<Task<tl::expected<QString, QString>>(
        AccountabilityRule rule, double seconds)>;

    static constexpr size_t maxRecords = 100;

    explicit InterventionService(
        const std::optional<DataDirectory>& directory, Compose compose = nullptr);

    void setCompose(Compose compose) { m_compose = std::move(compose); }

    /// Newest first.
    const std::vector<InterventionRecord>& records() const { return m_data.records; }
    const InterventionRecord* record(const QUuid& id) const;
    std::vector<InterventionRecord> recentRecords(size_t limit) const;

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    /// Evaluates the rules and composes the message of the first one that fires. Returns nothing
    /// if none fires or nothing could be composed; then nothing is recorded.
    Task<std::optional<InterventionRecord>> tick(
        std::vector<AccountabilityRule> rules, RuleEvaluationContext context);

    /// Adds a record. The one before of the same kind counts as ignored if it has no outcome.
    void recordFired(InterventionRecord record);

    /// An unknown id does nothing.
    void recordOutcome(const QUuid& recordID, InterventionOutcome outcome,
        std::optional<QString> userResponse, std::optional<TimePoint> suppressUntil = std::nullopt);

    /// The user hears of it again, or of something newer.
    void endSnooze(const QUuid& recordID);

    /// Keeps only what was fired in the current session.
    void pruneFiredSessionKeys(std::optional<QUuid> currentSessionID);

    /// Tries again to read a file that could not be read at the start.
    void readAgain();

private:
    InterventionRecord* find(const QUuid& id);
    void noteFired(const AccountabilityRule& rule, const RuleEvaluationContext& context);

    Compose m_compose;
    StoreFile m_file;
    InterventionsData m_data;
};

} // namespace pobblewig
