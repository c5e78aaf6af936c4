#pragma once

#include "foundation/Task.h"
#include "memory/LibrarianAnswers.h"
#include "memory/LibrarianLogic.h"
#include "memory/MemoryTiers.h"
#include "memory/UsageCounter.h"
#include "settings/AssistantRole.h"
#include "wire/LLMProvider.h"
#include "wire/LaneConfigurations.h"

#include <functional>
#include <memory>

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
    /// The closures are asked anew at each run.
    struct Dependencies {
        /// Nothing where no model is configured.
        std::function<Task<std::unique_ptr<LLMProvider>>()> providerProvider;
        std::function<Task<LibrarianModelConfig>()> configProvider;
        /// Told of each observation that is recorded.
        std::function<void(const QUuid& id)> observationLinkHook = [](const QUuid&) {};
        std::function<Calendar()> calendar = Calendar::current;
        Clock clock = systemNow;
    };

    struct DayToClose {
        QString dayKey;
        std::vector<ChatMessage> window;
        std::vector<DatedObservation> observations;
        QString activitySummary;
        std::vector<QString> previousIntent;
    };

    LibrarianService(MemoryTiers& memory, UsageCounter& usage, Dependencies dependencies);

    std::optional<TimePoint> lastRunAt() const { return m_lastRunAt; }
    std::optional<TimePoint> lastCleanupAt() const { return m_lastCleanupAt; }

    /// Of the latest failure; nothing since a run that went well.
    const std::optional<QString>& lastError() const { return m_lastError; }

    /// All zeros after a failure, and without a model.
    Task<LibrarianExtractionResult> extractAfterTurn(std::vector<ChatMessage> window,
        QString situation, std::vector<QString> referencePaths, std::set<AssistantRole> roles);
    Task<LibrarianExtractionResult> ingestMeetingNotes(MeetingNotes notes);

    /// Never fail: where the model does, the deterministic account stands in.
    Task<DailyCloseout> closeDailySession(DayToClose day);
    Task<WeeklyRollupResult> weeklyRollup(std::vector<PeriodSummary> dailies);

    /// Rewrites the notes if their size asks for it. A failure changes nothing.
    Task<> cleanupIfNeeded();

private:
    using Answer = tl::expected<QString, QString>;

    struct Job {
        QString prompt;
        LLMResponseFormat format;
        int tokenFactor = 1;
    };

    Task<Answer> ask(Job job);
    LibrarianExtractionResult store(
        const ExtractionResult& extraction, TimePoint observedAt, TimePoint now);

    MemoryTiers& m_memory;
    UsageCounter& m_usage;
    Dependencies m_dependencies;
    std::optional<TimePoint> m_lastRunAt;
    std::optional<TimePoint> m_lastCleanupAt;
    std::optional<QString> m_lastError;
};

} // namespace pobblewig
