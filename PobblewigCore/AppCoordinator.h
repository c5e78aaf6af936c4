#pragma once

#include "MemoryDesk.h"
#include "PublishedState.h"
#include "activity/ActivityDesk.h"
#include "activity/DiscreetFrontmostAppProvider.h"
#include "conversation/ChatService.h"
#include "conversation/ProposalDesk.h"
#include "conversation/SessionEnd.h"
#include "folders/AppDataAccessService.h"
#include "foundation/Calendar.h"
#include "foundation/DataDirectory.h"
#include "memory/history/ChatHistoryStore.h"
#include "memory/history/MemoryMigration.h"
#include "memory/history/UsageCounter.h"
#include "memory/recall/NativeMemoryRetrieval.h"
#include "screen/PermissionProviding.h"
#include "screen/ScreenCapturing.h"
#include "settings/ModeSwitch.h"
#include "settings/SettingsStore.h"
#include "tools/MemoryToolExecutor.h"
#include "wire/LaneProviders.h"
#include "wire/ModelLanes.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace pobblewig {

/// The spine: owns every store and service for the life of the process, wires them together, drives
/// them from one repeating timer and publishes their state for the user interface.
///
/// Services never call each other for a decision that concerns both; they call the closures that
/// they were handed here.
class AppCoordinator : public QObject {
    Q_OBJECT

public:
    /// What the user's session tells and permits. All of it outlives the coordinator; what is
    /// missing is not available.
    struct Session {
        FrontmostAppProviding* frontmostProvider = nullptr;
        /// Applications of this platform that are never watched, whatever the settings say.
        std::vector<QString> alwaysExcluded = {};
        ObservationReport observation = {};
        PermissionProviding* permissions = nullptr;
        ScreenCapturing* capturer = nullptr;
    };

    /// What the coordinator stands on. All of it can be replaced, so that the logic runs in a
    /// scratch directory with fakes.
    struct Parts {
        /// Nothing selects the user's own directory, with the migrations of early versions.
        std::optional<DataDirectory> directory;
        std::unique_ptr<HTTPClient> http;
        std::unique_ptr<KeychainHelper> keychain;
        /// Asked at every use of a model.
        std::function<Environment()> environment;
        std::function<Calendar()> calendar = Calendar::current;
        Clock clock = systemNow;
        /// Replaces the main model, so that the logic runs without a network.
        ChatService::ProviderFactory mainProviderOverride = {};
        /// How the folders that the user shares are read; without it they are not.
        std::unique_ptr<AppDataReading> appDataReading = {};
        /// The user's calendars; without it nothing of them is granted.
        std::unique_ptr<CalendarDataProviding> calendarProvider = {};
        Session session = {};
    };

    explicit AppCoordinator(Parts parts);

    ChatService& chat() { return m_chat; }
    MemoryTiers& memory() { return m_memory; }
    MemoryDesk& memoryDesk() { return m_memoryDesk; }
    ActivityDesk& activityDesk() { return m_activityDesk; }
    ModeSwitch& modes() { return m_modes; }
    ProposalDesk& proposalDesk() { return m_proposalDesk; }
    MemoryToolExecutor& toolExecutor() { return m_toolExecutor; }
    const PublishedState& state() const { return m_state; }

    /// Arms the 20-second timer and begins the start-up. To be called once.
    void start();

    Task<> pollOnce(TimePoint now);

    /// Publishes the services' present state.
    void refresh(TimePoint now);

    /// A change from the settings screens.
    void updateSettings(const std::function<void(AppSettings&)>& change);

    /// Closes the session as at the end of a day: its summary is written, the conversation goes
    /// into an archive and an empty one begins. What cannot be archived stays.
    void startNewSession();

    /// Adds a message that nobody asked for to the conversation, and tells of it.
    void deliverProactiveMessage(const QString& text, const QUuid& interventionID);

    /// A proactive message has reached the conversation: the buddy shows it.
    std::function<void(const QString& message)> onInterventionFired;

Q_SIGNALS:
    void stateChanged();

private:
    Task<> startUp();
    Task<> afterChatTurn();
    Task<> remember();
    Task<> publishModelLabel();
    Task<std::unique_ptr<LLMProvider>> makeMainProvider();
    Task<std::unique_ptr<LLMProvider>> makeLibrarianProvider();
    Task<MainModelConfig> mainConfig();
    Task<SituationSnapshot> buildSituation();
    Task<QString> situationText();
    /// The active session; nothing while the memory is off.
    std::optional<QUuid> rememberingSessionID() const;
    ChatService::Dependencies chatDependencies();
    DiscreetFrontmostAppProvider::Discretion discretion();
    DiagnosticsInfo buildDiagnostics(TimePoint now) const;
    Task<std::set<QString>> excludedBundleIDs();
    Task<> requestScreenPermission();
    LibrarianService::Dependencies librarianDependencies();
    SessionRolloverService::Dependencies rolloverDependencies();
    MemoryDesk::Dependencies memoryDeskDependencies();
    ProposalDesk::Dependencies proposalDeskDependencies();
    QString residentMemory() const;
    MemorySnapshot memorySnapshot(TimePoint now);
    std::vector<Tool> everyTool();
    std::unique_ptr<AppDataAccessService> appDataAccess();
    Task<std::vector<AppDataSource>> appDataSources();
    std::optional<QString> storageProblem() const;

    Parts m_parts;
    /// Why nothing can be written to the directory, found at the start.
    std::optional<QString> m_directoryProblem;
    /// Nothing where there is no directory at all: then all stores work in memory.
    std::optional<DataDirectory> m_directory;
    MigrationReport m_migrationReport;
    MarketConfig m_market;
    SettingsStore m_settings;
    MemoryTiers m_memory;
    RuleStore m_rules;
    ProposalManager m_proposals;
    DiscreetFrontmostAppProvider m_frontmost;
    ActivityTracker m_activity;
    ChatHistoryStore m_history;
    UsageCounter m_usage;
    ModelLanes m_lanes;
    LaneProviders m_providers;
    NativeMemoryRetrieval m_retrieval;
    std::unique_ptr<AppDataAccessService> m_appData;
    MemoryToolExecutor m_toolExecutor;
    ChatService m_chat;
    LibrarianService m_librarian;
    SessionRolloverService m_rollover;
    ReadingAlong m_readingAlong;
    SessionEnd m_sessionEnd;
    MemoryDesk m_memoryDesk;
    ActivityDesk m_activityDesk;
    ModeSwitch m_modes;
    ProposalDesk m_proposalDesk;
    PublishedState m_state;
    /// What the published memory was made of.
    std::optional<int> m_publishedMemoryRevision;
    QTimer m_pollTimer;
};

} // namespace pobblewig
