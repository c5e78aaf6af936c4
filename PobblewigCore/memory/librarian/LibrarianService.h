#pragma once

#include "features/Stores.h"
#include "memory/MemoryTiers.h"
#include "memory/librarian/LibrarianLogic.h"
#include "memory/librarian/NoteCleanup.h"
#include "settings/AssistantRole.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// What a run has added to memory.
struct LibrarianExtractionResult {
    int notesAdded = 0;
    int observationsAdded = 0;
    int referenceItemsAdded = 0;
    int sectionsProposed = 0;

    bool operator==(const LibrarianExtractionResult&) const = default;
};

/// The complete notes of a meeting.
struct MeetingNotes {
    QString appName;
    int minutes = 0;
    TimePoint startedAt;
    QString text;
};

/// The second, cheaper model, which reads conversations in the background and decides what to
/// remember. Failures here never reach the conversation; they become a log line and `lastError`.
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

    /// `stores`, `moment` and `models` must outlive the service.
    LibrarianService(const Stores& stores, const Moment& moment, ModelProviding& models);

    std::optional<TimePoint> lastRunAt() const { return m_lastRunAt; }
    std::optional<TimePoint> lastCleanupAt() const { return m_cleanup.lastRunAt(); }

    /// The latest failure, or nothing since a run that went well.
    const std::optional<QString>& lastError() const { return m_lastError; }
    std::optional<TimePoint> lastErrorAt() const { return m_lastErrorAt; }

    /// Grows whenever the latest failure changes.
    int revision() const { return m_revision; }

    /// Returns all zeros after a failure, without a model, or if there is nothing to read in the
    /// window.
    Task<LibrarianExtractionResult> extractAfterTurn(std::vector<ChatMessage> window,
        QString situation, std::vector<QString> referencePaths, std::set<AssistantRole> roles);
    Task<LibrarianExtractionResult> ingestMeetingNotes(MeetingNotes notes);

    /// Never fail: without an answer from the model, they return the deterministic summary.
    Task<DailyCloseout> closeDailySession(DayToClose day);
    Task<WeeklyRollupResult> weeklyRollup(std::vector<PeriodSummary> dailies);

    /// Rewrites the notes if they have grown too large.
    Task<> cleanupIfNeeded();

    /// Called when anything in memory is deleted, so that no run in progress restores what it has
    /// read. An abandoned run returns zeros or an empty summary.
    void abandonRuns();

private:
    /// The source that a run's findings are attributed to.
    struct Origin {
        MemorySource noteSource;
        QString itemSource;
        /// The time of the observations.
        TimePoint occurredAt;
    };

    /// The answer as parsed by `parse`. A failure is recorded under the name of the job.
    template <typename Value>
    std::optional<Value> accepted(const LibrarianModel::Answer& answer, QStringView job,
        const std::function<LibrarianAnswers::Parsed<Value>(const QString&)>& parse);
    /// Returns nothing while the memory is off.
    Task<LibrarianModel::Answer> ask(LibrarianModel::Question question, std::stop_token stop);
    bool mayRemember() const { return m_settings.settings().memoryEnabled; }
    void clearError();
    std::nullopt_t fail(QStringView job, const QString& description, const QString& loggable);

    Task<LibrarianExtractionResult> take(LibrarianModel::Answer answer, QString job, Origin origin);
    Task<LibrarianExtractionResult> store(
        ExtractionResult extraction, TimePoint occurredAt, TimePoint now);

    const SettingsStore& m_settings;
    MemoryTiers& m_memory;
    const Moment& m_moment;
    LibrarianModel m_model;
    NoteCleanup m_cleanup;
    /// Stops the runs begun since the memory was last deleted.
    std::stop_source m_stop;
    std::optional<TimePoint> m_lastRunAt;
    int m_revision = 0;
    std::optional<QString> m_lastError;
    std::optional<TimePoint> m_lastErrorAt;
};

} // namespace pobblewig
