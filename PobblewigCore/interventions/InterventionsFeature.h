#pragma once

#include "features/Feature.h"
#include "features/Stores.h"
#include "interventions/DeadlineSource.h"
#include "interventions/InterventionComposer.h"
#include "interventions/InterventionService.h"
#include "interventions/ProactiveLogic.h"
#include "memory/DatedObservation.h"

namespace pobblewig {

struct InterventionsState {
    /// The latest 5, newest first.
    std::vector<InterventionRecord> recentInterventions;
    /// Why a message of each kind was or was not sent, and since when that is so.
    QStringList verdicts;

    bool operator==(const InterventionsState&) const = default;
};

/// Speaks first: when a deadline is close, and once a day when the chat opens.
class InterventionsFeature : public Feature {
public:
    struct Parts {
        Stores stores;
        const Moment& moment;
        ModelProviding& models;
        const std::optional<DataDirectory>& directory;
        std::vector<DeadlineSource> sources;
        /// May be null.
        OccupationProviding* occupation = nullptr;
        /// The name of the application in front; empty if it is not known.
        std::function<QString()> currentApp;
        /// Puts a message into the conversation. `isAnnounced` unless the user is looking at it.
        std::function<void(const InterventionRecord& record, bool isAnnounced)> deliver;
        /// Says something of the companion's own, after a quick answer.
        std::function<void(const QString& text)> say;
    };

    explicit InterventionsFeature(Parts parts);

    InterventionService& service() { return m_service; }

    Task<> tick() override;
    std::vector<QString> situation(TimePoint now) const override;
    std::vector<Tool> tools() override;
    void publish(PublishedState& state) const override;
    int revision() const override { return Feature::revision() + m_service.revision(); }

    /// Called when the chat opens.
    Task<> deliverDailyBriefingIfDue();

    /// The user's quick answer to a message. An unknown id does nothing.
    void answer(QUuid recordID, ProactiveLogic::QuickAnswer answer);

    void recordInterventionOutcome(
        QUuid recordID, InterventionOutcome outcome, std::optional<QString> userResponse);

    /// The message of a rule that fired.
    Task<InterventionComposer::Text> composeIntervention(AccountabilityRule rule, double duration);

private:
    /// What is said about one deadline.
    struct Reminder {
        ReferenceItem item;
        TimePoint dueAt;
        QString key;
    };

    Task<> checkDeadlines(DeadlineSource source);
    Task<std::optional<ProactiveLogic::Silence>> silence(QString triggerType);
    std::optional<Reminder> nextReminder(const DeadlineSource& source) const;
    Task<> remind(DeadlineSource source, Reminder reminder);
    Task<InterventionComposer::Text> composeDeadlineCheckin(
        DeadlineSource source, Reminder reminder);
    /// Returns nothing if one is due.
    std::optional<QString> reasonAgainstBriefing() const;
    Task<InterventionComposer::Text> composeDailyBriefing();
    void keepBriefingDay(std::optional<QString> dayKey);
    void fire(InterventionRecord record, DatedObservation observation, bool isAnnounced);
    void note(DatedObservation observation);
    void keepVerdict(const QString& triggerType, const QString& verdict);
    QStringList verdicts() const;

    Parts m;
    SettingsStore& m_settings;
    MemoryTiers& m_memory;
    InterventionComposer m_composer;
    InterventionService m_service;
    /// With the time at which they were found first.
    std::map<QString, std::pair<QString, TimePoint>> m_verdicts;
    /// In a row, by the kind of message.
    std::map<QString, int> m_failures;
    std::map<QString, TimePoint> m_notBefore;
};

} // namespace pobblewig
