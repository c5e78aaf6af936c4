#pragma once

#include "features/Stores.h"
#include "foundation/Moment.h"
#include "memory/CleanupSnapshot.h"
#include "memory/MemoryTiers.h"
#include "memory/librarian/LibrarianLogic.h"
#include "memory/librarian/LibrarianModel.h"
#include "settings/AssistantRole.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// What a run has put into the memory.
struct LibrarianExtractionResult {
    int notesAdded = 0;
    int observationsAdded = 0;
    int referenceItemsAdded = 0;
    int sectionsProposed = 0;

    bool operator==(const LibrarianExtractionResult&) const = default;
};

/// The finished notes of a meeting.
struct MeetingNotes {
    QString appName;
    int minutes = 0;
    TimePoint startedAt;
    QString text;
};

/// The second, cheaper model, which reads conversations in the background and decides what to
/// remember. Nothing that goes wrong here reaches the conversation: it becomes a log line and
/// `lastError`.
///
/// Lives on the main thread, as long as the process.
class LibrarianService {
public:
    struct DayToClose {
        QString dayKey;
        std::vector<ChatMessage> window;
        std::vector<DatedObservation> observations;
        QString activitySummary;
        std::vector<QString> previousIntent;
    };

    /// `stores` and `moment` outlive the service, and so do the models.
    LibrarianService(const Stores& stores, const Moment& moment, ModelProviding& models);

    std::optional<TimePoint> lastRunAt() const { return m_lastRunAt; }
    std::optional<TimePoint> lastCleanupAt() const { return m_lastCleanupAt; }

    /// Of the latest failure; nothing since a run that went well.
    const std::optional<QString>& lastError() const { return m_lastError; }
    std::optional<TimePoint> lastErrorAt() const { return m_lastErrorAt; }

    /// All zeros after a failure, without a model and where the window holds nothing to read.
    Task<LibrarianExtractionResult> extractAfterTurn(std::vector<ChatMessage> window,
        QString situation, std::vector<QString> referencePaths, std::set<AssistantRole> roles);
    Task<LibrarianExtractionResult> ingestMeetingNotes(MeetingNotes notes);

    /// Never fail: where the model does, the deterministic account stands in.
    Task<DailyCloseout> closeDailySession(DayToClose day);
    Task<WeeklyRollupResult> weeklyRollup(std::vector<PeriodSummary> dailies);

    /// Rewrites the notes if their size asks for it. A failure changes nothing, and neither does an
    /// answer that the user's own changes have overtaken.
    Task<> cleanupIfNeeded();

    /// Called when the memory is deleted: no run that is under way brings back what it has read.
    /// Its result is zeros or an empty account.
    void abandonRuns();

private:
    /// Who vouches for what a run has found.
    struct Origin {
        MemorySource noteSource;
        QString itemSource;
        /// Of the observations; else the moment of the answer.
        std::optional<TimePoint> occurredAt = std::nullopt;
    };

    /// What `parse` reads in the answer. A failure is recorded under the name of the job.
    template <typename Value>
    std::optional<Value> accepted(const LibrarianModel::Answer& answer, QStringView job,
        const std::function<LibrarianAnswers::Parsed<Value>(const QString&)>& parse);
    /// Nothing with the memory off.
    Task<LibrarianModel::Answer> ask(LibrarianModel::Question question, std::stop_token stop);
    bool mayRemember() const { return m_settings.settings().memoryEnabled; }
    void clearError();
    std::nullopt_t fail(QStringView job, const QString& description, const QString& loggable);

    LibrarianExtractionResult take(
        const LibrarianModel::Answer& answer, QStringView job, const Origin& origin);
    LibrarianExtractionResult store(
        const ExtractionResult& extraction, TimePoint occurredAt, TimePoint now);
    void applyCleanup(const LibrarianModel::Answer& answer, const CleanupSnapshot& seen);

    const SettingsStore& m_settings;
    MemoryTiers& m_memory;
    const Moment& m_moment;
    LibrarianModel m_model;
    /// Of the runs since the memory was last deleted.
    std::stop_source m_stop;
    bool m_isCleaningUp = false;
    std::optional<TimePoint> m_lastRunAt;
    std::optional<TimePoint> m_lastCleanupAt;
    std::optional<QString> m_lastError;
    std::optional<TimePoint> m_lastErrorAt;
};

} // namespace pobblewig
