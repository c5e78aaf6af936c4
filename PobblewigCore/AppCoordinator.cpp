#include "AppCoordinator.h"

#include "conversation/SituationBuilder.h"

#include <QFileInfo>

namespace pobblewig {

namespace {

AppCoordinator::Parts withDirectory(AppCoordinator::Parts parts)
{
    if (!parts.directory) {
        JSONFileStore::migrateLegacyDefaultDirectory();
        spawn(parts.keychain->migrateFromLegacyService());
        parts.directory.emplace(JSONFileStore::defaultDirectory());
    }
    return parts;
}

AppCoordinator::Parts completed(AppCoordinator::Parts parts)
{
    if (!parts.calendarProvider)
        parts.calendarProvider = std::make_unique<UnavailableCalendarProvider>();
    return withDirectory(std::move(parts));
}

std::unique_ptr<ModelProviding> models(
    AppCoordinator::Parts& parts, ModelLanes& lanes, RequestLog& requests)
{
    if (parts.models)
        return std::move(parts.models);
    return std::make_unique<LaneProviders>(*parts.http, lanes, requests, parts.environment);
}

StorageState storageState(const StoreRoom& room)
{
    StorageState state { .problem = room.storageProblem(), .setAside = room.health().setAside };
    for (const auto& [path, reason] : room.health().unreadable)
        state.unreadable.emplace(QFileInfo(path).fileName(), reason);
    return state;
}

} // namespace

AppCoordinator::AppCoordinator(Parts parts)
    : m_parts(completed(std::move(parts)))
    , m_market(MarketConfig::load(m_parts.environment()))
    , m_room({ .directory = m_parts.directory,
          .moment = m_parts.moment,
          .keychain = *m_parts.keychain,
          .defaultCanvasBaseURL = m_market.defaultCanvasBaseUrl,
          .wording = m_parts.wording })
    , m_stores(m_room.stores())
    , m_lanes(*m_parts.keychain, m_market)
    , m_requests(m_parts.moment.clock)
    , m_modelDesk({ .http = *m_parts.http,
          .keychain = *m_parts.keychain,
          .lanes = m_lanes,
          .requests = m_requests,
          .environment = m_parts.environment,
          .environmentFile = m_parts.environmentFile,
          .moment = m_parts.moment })
    , m_models(models(m_parts, m_lanes, m_requests))
    , m_toolExecutor({}, m_parts.moment.clock)
    , m_keySafety(m_parts.environmentFile)
    , m_settings(m_stores.settings, m_parts.moment)
    , m_activity(m_stores, m_parts.moment, m_room.directory(), m_parts.observation)
    , m_librarian({ .stores = m_stores,
          .moment = m_parts.moment,
          .models = *m_models,
          .directory = m_room.directory(),
          .situation = [this] { return buildSituation().summary; },
          .activitySummary =
              [this](TimePoint from, TimePoint to) {
                  return m_activity.desk().activitySummary(from, to);
              } })
    , m_conversation(m_stores, m_parts.moment, m_librarian,
          { .models = *m_models,
              .situation = [this] { return buildSituation(); },
              .toolExecutor = &m_toolExecutor,
              .screen = m_parts.screen,
              .wording = m_parts.wording,
              .environmentFile = m_parts.environmentFile })
    , m_library(m_stores.history, m_stores.memory, m_parts.moment, m_room.directory())
    , m_proposals(m_stores, m_parts.moment,
          { chat(), modes(), *m_parts.calendarProvider,
              [this] { m_librarian.service().abandonRuns(); },
              [this] { spawn(m_calendars.syncNow()); } })
    , m_memory({ .stores = m_stores,
          .moment = m_parts.moment,
          .directory = m_room.directory(),
          .situation = [this] { return buildSituation().summary; },
          .deleting = [this] { m_librarian.service().abandonRuns(); },
          .forgetting = [this] { forgetEverywhere(); },
          .forgotten = [this] { chat().reload(); } })
    , m_canvas(schoolParts())
    , m_classroom(schoolParts(),
          { .baseURL = m_market.classroomBaseUrl, .backendBaseUrl = m_market.backendBaseUrl })
    , m_interventions(interventionParts())
    , m_calendars({ .settings = m_stores.settings,
                      .reference = m_stores.memory.reference,
                      .provider = *m_parts.calendarProvider,
                      .directory = m_room.directory() },
          m_parts.moment)
    , m_folders(m_stores.settings, m_parts.appDataReading.get())
    , m_memes({ .stores = m_stores,
          .moment = m_parts.moment,
          .models = *m_models,
          .directory = m_room.directory(),
          .bundledMemes = m_parts.bundledMemes,
          .pictures = m_parts.pictures,
          .occupation = m_parts.occupation })
    // The conversation ticks first, so that the records of a session are written before the rest.
    , m_features { { &m_keySafety }, { &m_librarian }, { &m_conversation }, { &m_settings },
        { &m_activity }, { &m_memory }, { &m_canvas }, { &m_classroom }, { &m_calendars },
        { &m_interventions }, { &m_folders }, { &m_proposals }, { &m_memes } }
{
    std::vector<Tool> tools;
    for (const auto& entry : m_features) {
        entry.feature->onChanged = [this] { refresh(); };
        std::ranges::move(entry.feature->tools(), std::back_inserter(tools));
    }
    chat().setTools(tools);
    m_toolExecutor.setTools(std::move(tools));
    m_conversation.onTurnEnded = [this] { spawn(m_memes.reactWithMemeIfAppropriate()); };
    m_memes.onMemeReaction = [this](const MemeReaction& reaction) {
        if (onMemeReaction)
            onMemeReaction(reaction);
    };
    chat().onActions = [this](ChatService::Actions actions) {
        return proposalDesk().apply(std::move(actions));
    };
    m_models->onUse = [this](const auto& model) { m_keySafety.noteUse(model); };
    chat().judge = [this](const BuddyAction& action, const ChatService::Actions& requested) {
        return proposalDesk().verdict(action, requested);
    };
    m_pollTimer.setInterval(m_parts.pollInterval);
    connect(&m_pollTimer, &QTimer::timeout, this, [this] { spawn(pollOnce()); });
    refresh();
}

DiagnosticsInfo AppCoordinator::diagnostics() const
{
    const auto& librarian = m_librarian.service();
    return {
        .observation = m_activity.report(),
        .ruleVerdicts = m_activity.ruleVerdicts(),
        .proactiveVerdicts = m_state.of<InterventionsState>().verdicts,
        .totalToolCalls = m_toolExecutor.totalCalls(),
        .librarianLastRunAt = librarian.lastRunAt(),
        .librarianLastError = librarian.lastError(),
        .librarianLastErrorAt = librarian.lastErrorAt(),
    };
}

void AppCoordinator::start()
{
    m_pollTimer.start();
    spawn(startUp());
}

Task<> AppCoordinator::pollOnce()
{
    if (m_room.readAgain())
        chat().reload();
    for (const auto& entry : m_features)
        co_await entry.feature->tick();
    refresh();
}

void AppCoordinator::refresh()
{
    const auto before = m_state.revision();
    for (auto& [feature, published] : m_features) {
        const auto revision = feature->revision();
        if (std::exchange(published, revision) != revision)
            feature->publish(m_state);
    }
    m_state.set(storageState(m_room));
    if (m_state.revision() != before)
        Q_EMIT stateChanged();
}

void AppCoordinator::updateSettings(const std::function<void(AppSettings&)>& change)
{
    m_stores.settings.update(change);
    refresh();
}

void AppCoordinator::markOnboardingComplete()
{
    updateSettings([](AppSettings& settings) { settings.hasCompletedOnboarding = true; });
}

void AppCoordinator::startNewSession()
{
    spawn(m_conversation.sessionEnd().startNewSession());
}

void AppCoordinator::deliverProactiveMessage(
    const QString& text, const QUuid& interventionID, bool isAnnounced)
{
    chat().say(text, interventionID);
    m_stores.usage.addIntervention();
    refresh();
    if (isAnnounced && onInterventionFired)
        onInterventionFired(text);
}

Task<> AppCoordinator::startUp()
{
    m_room.finishMigration();
    for (const auto& entry : m_features)
        entry.feature->start();
    co_await pollOnce();
}

SchoolFeature::Parts AppCoordinator::schoolParts()
{
    return { .http = *m_parts.http,
        .settings = m_stores.settings,
        .reference = m_stores.memory.reference,
        .moment = m_parts.moment,
        .environment = m_parts.environment,
        .directory = m_room.directory() };
}

InterventionsFeature::Parts AppCoordinator::interventionParts()
{
    return {
        .stores = m_stores,
        .moment = m_parts.moment,
        .models = *m_models,
        .directory = m_room.directory(),
        .sources = deadlineSources(m_canvas, m_classroom),
        .occupation = m_parts.occupation,
        .currentApp =
            [this] {
                const auto& session = m_activity.tracker().currentSession();
                return session ? session->applicationName : QString();
            },
        .deliver =
            [this](const InterventionRecord& record, bool isAnnounced) {
                deliverProactiveMessage(record.message, record.id, isAnnounced);
            },
        .say = [this](const QString& text) { chat().say(text); },
    };
}

SituationSnapshot AppCoordinator::buildSituation() const
{
    const auto now = m_parts.moment.now();
    QStringList lines;
    for (const auto& entry : m_features) {
        for (auto& line : entry.feature->situation(now))
            lines.append(std::move(line));
    }
    return SituationBuilder::snapshot({
        .settings = m_stores.settings.settings(),
        .memory = m_stores.memory,
        .now = now,
        .calendar = m_parts.moment.calendar(),
        .lines = std::move(lines),
        .canvasIsMissing = !m_canvas.isConnected(),
    });
}

void AppCoordinator::forgetEverywhere()
{
    chat().cancelStreaming();
    m_librarian.service().abandonRuns();
    m_stores.proposals.dropForgets();
}

} // namespace pobblewig
