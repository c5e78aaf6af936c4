#pragma once

#include "DiagnosticsInfo.h"
#include "StoreRoom.h"
#include "activity/ActivityFeature.h"
#include "connections/ConnectionsFeature.h"
#include "conversation/ConversationFeature.h"
#include "conversation/ProposalFeature.h"
#include "folders/FoldersFeature.h"
#include "memory/librarian/LibrarianFeature.h"
#include "memory/recall/MemoryFeature.h"
#include "settings/SettingsFeature.h"
#include "tools/MemoryToolExecutor.h"
#include "wire/LaneProviders.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace pobblewig {

struct StorageState {
    /// Why nothing can be kept on the disk at present.
    std::optional<QString> problem;

    bool operator==(const StorageState&) const = default;
};

/// The spine: owns the stores and the features for the life of the process, drives the features
/// from one repeating timer and publishes their state for the user interface.
///
/// Features never call each other for a decision that concerns both; they call the closures that
/// they were handed here.
class AppCoordinator : public QObject {
    Q_OBJECT

public:
    /// What the coordinator stands on. All of it can be replaced, so that the logic runs in a
    /// scratch directory with fakes.
    struct Parts {
        /// Nothing selects the user's own directory, with the migrations of early versions.
        std::optional<DataDirectory> directory;
        std::unique_ptr<HTTPClient> http;
        std::unique_ptr<KeychainHelper> keychain;
        /// Asked at every use of a model.
        std::function<Environment()> environment;
        PlatformWording wording;
        Moment moment = {};
        /// Replaces the models that the environment names, so that the logic runs without a
        /// network.
        std::unique_ptr<ModelProviding> models = {};
        /// How the folders that the user shares are read; without it they are not.
        std::unique_ptr<AppDataReading> appDataReading = {};
        /// The user's calendars; without it nothing of them is granted.
        std::unique_ptr<CalendarDataProviding> calendarProvider = {};
        ActivityFeature::Observation observation = {};
        ScreenAccess screen = {};
        std::chrono::milliseconds pollInterval = std::chrono::seconds(20);
    };

    explicit AppCoordinator(Parts parts);

    ChatService& chat() { return m_conversation.chat(); }
    MemoryTiers& memory() { return m_stores.memory; }
    MemoryDesk& memoryDesk() { return m_memory.desk(); }
    ActivityDesk& activityDesk() { return m_activity.desk(); }
    ModeSwitch& modes() { return m_settings.modes(); }
    ProposalDesk& proposalDesk() { return m_proposals.desk(); }
    MemoryToolExecutor& toolExecutor() { return m_toolExecutor; }

    const PublishedState& state() const { return m_state; }

    /// How the program is doing at this moment.
    DiagnosticsInfo diagnostics() const;

    /// Arms the timer and begins the start-up. Called once.
    void start();

    Task<> pollOnce();

    /// Publishes what the features say has changed.
    void refresh();

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
    struct Entry {
        Feature* feature;
        /// The feature's revision when it was last published.
        std::optional<int> published = std::nullopt;
    };

    Task<> startUp();
    Task<SituationSnapshot> buildSituation();
    Task<QString> situationText();
    void forgetEverywhere();

    Parts m_parts;
    MarketConfig m_market;
    StoreRoom m_room;
    Stores m_stores;
    ModelLanes m_lanes;
    std::unique_ptr<ModelProviding> m_models;
    MemoryToolExecutor m_toolExecutor;

    SettingsFeature m_settings;
    ActivityFeature m_activity;
    LibrarianFeature m_librarian;
    ConversationFeature m_conversation;
    ProposalFeature m_proposals;
    MemoryFeature m_memory;
    ConnectionsFeature m_connections;
    FoldersFeature m_folders;
    std::vector<Entry> m_features;

    PublishedState m_state;
    QTimer m_pollTimer;
};

} // namespace pobblewig
