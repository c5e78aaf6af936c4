#pragma once

#include "DiagnosticsInfo.h"
#include "StoreRoom.h"
#include "activity/ActivityFeature.h"
#include "connections/calendars/CalendarsFeature.h"
#include "connections/canvas/CanvasFeature.h"
#include "connections/classroom/ClassroomFeature.h"
#include "conversation/ConversationFeature.h"
#include "conversation/ProposalFeature.h"
#include "folders/FoldersFeature.h"
#include "interventions/InterventionsFeature.h"
#include "memes/reactions/MemesFeature.h"
#include "memory/history/ConversationLibrary.h"
#include "memory/librarian/LibrarianFeature.h"
#include "memory/recall/MemoryFeature.h"
#include "settings/SettingsFeature.h"
#include "tools/MemoryToolExecutor.h"
#include "wire/KeySafetyFeature.h"
#include "wire/LaneProviders.h"
#include "wire/ModelDesk.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace pobblewig {

struct StorageState {
    /// Why something cannot currently be saved to disk.
    std::optional<QString> problem;
    /// The names of the files that cannot be read at the moment, each with the reason. What belongs
    /// into them is kept in memory only.
    std::map<QString, QString> unreadable = {};
    /// The names under which corrupt files have been kept since the start.
    QStringList setAside = {};

    bool operator==(const StorageState&) const = default;
};

/// The centre of the program: owns the stores and the features for the life of the process, drives
/// the features from one repeating timer and publishes their state for the user interface.
///
/// Features never call each other for a decision that concerns both. They call the closures that
/// they were given here.
class AppCoordinator : public QObject {
    Q_OBJECT

public:
    /// The environment of the coordinator. All of it can be replaced, so that the logic runs with
    /// fakes in a scratch directory.
    struct Parts {
        /// If empty, the user's own directory is used, and files of early versions are migrated.
        std::optional<DataDirectory> directory;
        std::unique_ptr<HTTPClient> http;
        std::unique_ptr<KeychainHelper> keychain;
        /// Called at every use of a model.
        std::function<Environment()> environment;
        /// The file that part of it comes from; kept from other users.
        QString environmentFile = {};
        PlatformWording wording;
        Moment moment = {};
        /// Replaces the models that the environment names, so that the logic runs without a
        /// network.
        std::unique_ptr<ModelProviding> models = {};
        /// Reads the folders that the user shares. Without it they are not read.
        std::unique_ptr<AppDataReading> appDataReading = {};
        /// The user's calendars. Without it no access to them is granted.
        std::unique_ptr<CalendarDataProviding> calendarProvider = {};
        ActivityFeature::Observation observation = {};
        ScreenAccess screen = {};
        /// Null if nothing tells.
        OccupationProviding* occupation = nullptr;
        /// Decodes the pictures of memes. Without it there are none.
        std::shared_ptr<MemePictureDecoding> pictures = {};
        /// The memes that come with the program.
        std::optional<QDir> bundledMemes = {};
        std::chrono::milliseconds pollInterval = std::chrono::seconds(20);
    };

    explicit AppCoordinator(Parts parts);

    ChatService& chat() { return m_conversation.chat(); }
    ConversationLibrary& library() { return m_library; }
    MemoryTiers& memory() { return m_stores.memory; }
    MemoryDesk& memoryDesk() { return m_memory.desk(); }
    ActivityDesk& activityDesk() { return m_activity.desk(); }
    ModeSwitch& modes() { return m_settings.modes(); }
    ProposalDesk& proposalDesk() { return m_proposals.desk(); }
    CalendarsFeature& calendars() { return m_calendars; }
    MemoryToolExecutor& toolExecutor() { return m_toolExecutor; }
    ModelDesk& modelDesk() { return m_modelDesk; }
    CanvasFeature& canvas() { return m_canvas; }
    ClassroomFeature& classroom() { return m_classroom; }
    InterventionsFeature& interventions() { return m_interventions; }
    MemesFeature& memes() { return m_memes; }

    const PublishedState& state() const { return m_state; }
    const UsageCounter& usage() const { return m_stores.usage; }

    /// The latest requests to the models that the environment names.
    const RequestLog& requests() const { return m_requests; }

    /// The program's current state.
    DiagnosticsInfo diagnostics() const;

    /// Starts the timer and begins the start-up. Called once.
    void start();

    Task<> pollOnce();

    /// Publishes the features whose revision has grown.
    void refresh();

    /// Applies a change from the settings screens.
    void updateSettings(const std::function<void(AppSettings&)>& change);

    void markOnboardingComplete();

    /// Closes the session as at the end of a day: writes its summary, archives the conversation and
    /// opens an empty one. What cannot be archived stays.
    void startNewSession();

    /// Adds a message that the companion begins to the conversation, and announces it unless the
    /// user is looking there.
    void deliverProactiveMessage(
        const QString& text, const QUuid& interventionID, bool isAnnounced = true);

    /// Called when a proactive message was added to the conversation, so that the buddy shows it.
    std::function<void(const QString& message)> onInterventionFired;

    /// Called when the buddy is to turn into a meme.
    std::function<void(const MemeReaction&)> onMemeReaction;

Q_SIGNALS:
    void stateChanged();

private:
    struct Entry {
        Feature* feature;
        /// The feature's revision when it was last published.
        std::optional<int> published = std::nullopt;
    };

    Task<> startUp();
    SchoolFeature::Parts schoolParts();
    InterventionsFeature::Parts interventionParts();
    SituationSnapshot buildSituation() const;
    void forgetEverywhere();

    Parts m_parts;
    MarketConfig m_market;
    StoreRoom m_room;
    Stores m_stores;
    ModelLanes m_lanes;
    RequestLog m_requests;
    ModelDesk m_modelDesk;
    std::unique_ptr<ModelProviding> m_models;
    MemoryToolExecutor m_toolExecutor;

    KeySafetyFeature m_keySafety;
    SettingsFeature m_settings;
    ActivityFeature m_activity;
    LibrarianFeature m_librarian;
    ConversationFeature m_conversation;
    ConversationLibrary m_library;
    ProposalFeature m_proposals;
    MemoryFeature m_memory;
    CanvasFeature m_canvas;
    ClassroomFeature m_classroom;
    InterventionsFeature m_interventions;
    CalendarsFeature m_calendars;
    FoldersFeature m_folders;
    MemesFeature m_memes;
    std::vector<Entry> m_features;

    PublishedState m_state;
    QTimer m_pollTimer;
};

} // namespace pobblewig
