#include "AppCoordinator.h"

#include "activity/RuleTexts.h"
#include "activity/RuleTools.h"
#include "conversation/SituationBuilder.h"
#include "folders/FolderTools.h"
#include "foundation/Log.h"
#include "memory/recall/MemoryTools.h"

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 20s;
constexpr size_t recentSessionCount = 10;

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

std::optional<DataDirectory> usable(const DataDirectory& directory)
{
    return directory.path.exists() ? std::optional(directory) : std::nullopt;
}

MigrationReport migrated(const std::optional<DataDirectory>& directory, TimePoint now)
{
    return directory ? MemoryMigration::run(*directory, now) : MigrationReport();
}

std::vector<ActivitySession> firstOf(const std::vector<ActivitySession>& sessions, size_t count)
{
    return { sessions.begin(),
        sessions.begin() + std::ptrdiff_t(std::min(count, sessions.size())) };
}

void rememberTheRequest(AppSettings& settings)
{
    settings.screenCaptureRequestedBefore = true;
}

QString modelLabel(const LLMConfiguration& model)
{
    if (model.modelID == model.providerName)
        return model.modelID;
    return QStringLiteral("%1 (%2)").arg(model.modelID, model.providerName);
}

} // namespace

AppCoordinator::AppCoordinator(Parts parts)
    : m_parts(completed(std::move(parts)))
    , m_directoryProblem(m_parts.directory->prepare())
    , m_directory(usable(*m_parts.directory))
    , m_migrationReport(migrated(m_directory, m_parts.clock()))
    , m_market(MarketConfig::load(m_parts.environment()))
    , m_settings(m_directory, *m_parts.keychain, m_market.defaultCanvasBaseUrl)
    , m_memory(m_directory, m_parts.calendar)
    , m_rules(m_directory)
    , m_proposals(m_directory)
    , m_frontmost(m_parts.session.frontmostProvider, discretion())
    , m_activity(m_frontmost, m_directory)
    , m_history(m_directory)
    , m_usage(m_directory)
    , m_lanes(*m_parts.keychain, m_market)
    , m_providers(*m_parts.http, m_lanes, m_parts.environment)
    , m_retrieval({ .reference = m_memory.reference,
                      .observations = m_memory.observations,
                      .summaries = m_memory.summaries,
                      .sessions = m_memory.sessions,
                      .memory = m_memory.notes },
          [this] { return situationText(); })
    , m_appData(appDataAccess())
    , m_toolExecutor(everyTool(), m_parts.clock)
    , m_chat(m_history, m_usage, chatDependencies())
    , m_librarian(m_memory, m_usage, librarianDependencies())
    , m_rollover(rolloverDependencies())
    , m_readingAlong({ .settings = m_settings,
          .history = m_history,
          .memory = m_memory,
          .librarian = m_librarian,
          .situation = [this] { return situationText(); } })
    , m_sessionEnd({ .memory = m_memory,
          .chat = m_chat,
          .readingAlong = m_readingAlong,
          .rollover = m_rollover,
          .calendar = m_parts.calendar,
          .clock = m_parts.clock,
          .changed = [this] { refresh(m_parts.clock()); } })
    , m_memoryDesk(memoryDeskDependencies())
    , m_activityDesk({ .activity = m_activity,
          .rules = m_rules,
          .clock = m_parts.clock,
          .changed = [this] { refresh(m_parts.clock()); } })
    , m_modes(m_settings, m_parts.clock, [this] { refresh(m_parts.clock()); })
    , m_proposalDesk(proposalDeskDependencies())
{
    m_chat.onActions = [this](ChatService::Actions actions) {
        return m_proposalDesk.apply(std::move(actions));
    };
    m_chat.onTurnComplete = [this] { return afterChatTurn(); };
    m_pollTimer.setInterval(pollInterval);
    connect(&m_pollTimer, &QTimer::timeout, this, [this] { spawn(pollOnce(m_parts.clock())); });
    refresh(m_parts.clock());
}

void AppCoordinator::start()
{
    m_pollTimer.start();
    spawn(startUp());
}

Task<> AppCoordinator::pollOnce(TimePoint now)
{
    co_await m_sessionEnd.endIfDue(now);
    m_activity.poll(now);
    m_memory.notes.pruneExpired(now);
    refresh(now);
}

void AppCoordinator::refresh(TimePoint now)
{
    auto* const permissions = m_parts.session.permissions;
    PublishedState state {
        .settings = m_settings.settings(),
        .isPaused = m_settings.isPaused(now),
        .currentSession = m_activity.currentSession(),
        .recentSessions = firstOf(m_activity.history(), recentSessionCount),
        .ruleList = m_rules.rules(),
        .pendingProposals = m_proposals.pendingProposals(),
        .screenCaptureGranted = permissions && permissions->screenCaptureGranted(),
        .accessibilityGranted = permissions && permissions->accessibilityGranted(),
        .isClosingSession = m_sessionEnd.isUnderWay(),
        .usage = m_usage.snapshot(),
        .memory = memorySnapshot(now),
        .modelLabel = m_state.modelLabel,
        .storageProblem = storageProblem(),
        .keyring = m_parts.keychain->state(),
        .diagnostics = buildDiagnostics(now),
    };
    if (state == m_state)
        return;
    m_state = std::move(state);
    Q_EMIT stateChanged();
}

void AppCoordinator::updateSettings(const std::function<void(AppSettings&)>& change)
{
    m_settings.update(change);
    refresh(m_parts.clock());
}

void AppCoordinator::startNewSession()
{
    spawn(m_sessionEnd.startNewSession());
}

void AppCoordinator::deliverProactiveMessage(const QString& text, const QUuid& interventionID)
{
    m_history.append({ .id = QUuid::createUuid(),
        .role = ChatMessage::Role::assistant,
        .text = text,
        .timestamp = m_parts.clock(),
        .sessionID = rememberingSessionID(),
        .relatedInterventionID = interventionID });
    m_chat.reload();
    m_usage.addIntervention();
    refresh(m_parts.clock());
    if (onInterventionFired)
        onInterventionFired(text);
}

Task<> AppCoordinator::startUp()
{
    m_modes.restoreTemporaryModeRevert(m_parts.clock());
    m_migrationReport.legacyChatAdopted = MemoryMigration::adoptLegacyChatIfNeeded(
        m_memory.sessions, m_history, m_parts.clock(), m_parts.calendar());
    Log::line(QStringLiteral("buddy: ") + m_migrationReport.migrationSummary());
    m_rollover.finishInterrupted(m_parts.clock(), m_parts.calendar());
    m_chat.reload();
    m_memory.sessions.ensureActiveSession(m_parts.clock(), m_parts.calendar());
    spawn(m_rollover.rollUpWeek(m_parts.clock()));
    // The first poll may have to wait for the librarian.
    co_await publishModelLabel();
    co_await pollOnce(m_parts.clock());
}

Task<> AppCoordinator::afterChatTurn()
{
    m_memory.sessions.recordTurn(m_parts.clock());
    // The conversation does not wait for the librarian.
    spawn(remember());
    co_await publishModelLabel();
    refresh(m_parts.clock());
}

Task<> AppCoordinator::remember()
{
    co_await m_readingAlong.afterChatTurn();
    refresh(m_parts.clock());
}

Task<> AppCoordinator::publishModelLabel()
{
    const auto provider = co_await makeMainProvider();
    auto label = QStringLiteral("no model configured");
    if (provider)
        label = modelLabel(provider->configuration());
    if (std::exchange(m_state.modelLabel, label) != label)
        Q_EMIT stateChanged();
}

Task<std::unique_ptr<LLMProvider>> AppCoordinator::makeMainProvider()
{
    if (m_parts.mainProviderOverride)
        return m_parts.mainProviderOverride();
    return m_providers.makeMainProvider();
}

Task<std::unique_ptr<LLMProvider>> AppCoordinator::makeLibrarianProvider()
{
    // With the memory off nothing is read for it either.
    if (!m_settings.settings().memoryEnabled)
        co_return std::unique_ptr<LLMProvider>();
    co_return co_await m_providers.makeLibrarianProvider();
}

Task<MainModelConfig> AppCoordinator::mainConfig()
{
    return m_lanes.resolvedMainModel(m_parts.environment());
}

Task<SituationSnapshot> AppCoordinator::buildSituation()
{
    const auto now = m_parts.clock();
    co_return SituationBuilder::snapshot({
        .settings = m_settings.settings(),
        .isPaused = m_settings.isPaused(now),
        .currentSession = m_activity.currentSession(),
        .memory = m_memory,
        .calendar = m_parts.calendar(),
        .now = now,
    });
}

Task<QString> AppCoordinator::situationText()
{
    const auto situation = co_await buildSituation();
    co_return situation.summary;
}

QString AppCoordinator::residentMemory() const
{
    if (!m_settings.settings().memoryEnabled)
        return {};
    return m_memory.notes.residentMemory(MemoryStore::hardCapTokens, m_parts.clock());
}

std::optional<QUuid> AppCoordinator::rememberingSessionID() const
{
    const auto session = m_memory.sessions.activeSession();
    return session && m_settings.settings().memoryEnabled ? std::optional(session->id)
                                                          : std::nullopt;
}

ChatService::Dependencies AppCoordinator::chatDependencies()
{
    return {
        .mainProvider = [this] { return makeMainProvider(); },
        .visionProvider = [this] { return m_providers.makeVisionProvider(); },
        .mainConfig = [this] { return mainConfig(); },
        .situationProvider = [this] { return buildSituation(); },
        .residentMemory = [this] { return residentMemory(); },
        .memoryEnabledProvider = [this] { return m_settings.settings().memoryEnabled; },
        .toolExecutor = [this] { return &m_toolExecutor; },
        .sessionIDProvider = [this] { return rememberingSessionID(); },
        .actionConfirmations = [this] { return m_settings.settings().actionConfirmations; },
        .screenshots = { .capturer = m_parts.session.capturer,
            .excludedBundleIDs = [this] { return excludedBundleIDs(); },
            .requestScreenPermission = [this] { return requestScreenPermission(); } },
        .calendar = m_parts.calendar,
        .clock = m_parts.clock,
    };
}

DiscreetFrontmostAppProvider::Discretion AppCoordinator::discretion()
{
    return {
        .alwaysExcluded = m_parts.session.alwaysExcluded,
        .excluded = [this] { return m_settings.settings().excludedBundleIDs; },
        .isPaused = [this] { return m_settings.isPaused(m_parts.clock()); },
    };
}

DiagnosticsInfo AppCoordinator::buildDiagnostics(TimePoint now) const
{
    const auto calendar = m_parts.calendar();
    const RuleEvaluationContext context {
        .now = now,
        .calendar = calendar,
        .currentMode = m_settings.settings().mode,
        .observationPaused = m_settings.isPaused(now),
        .currentSession = m_activity.currentSession(),
        .categoryDurations = m_activity.categoryDurations(now, calendar),
    };
    return {
        .observation = m_parts.session.observation,
        .ruleVerdicts = RuleTexts::verdicts(m_rules.rules(), context),
        .totalToolCalls = m_toolExecutor.totalCalls(),
        .librarianLastRunAt = m_librarian.lastRunAt(),
        .librarianLastError = m_librarian.lastError(),
        .librarianLastErrorAt = m_librarian.lastErrorAt(),
    };
}

std::unique_ptr<AppDataAccessService> AppCoordinator::appDataAccess()
{
    if (!m_parts.appDataReading)
        return nullptr;
    return std::make_unique<AppDataAccessService>(
        [this] { return appDataSources(); }, *m_parts.appDataReading);
}

Task<std::set<QString>> AppCoordinator::excludedBundleIDs()
{
    const auto& excluded = m_settings.settings().excludedBundleIDs;
    co_return std::set<QString>(excluded.begin(), excluded.end());
}

Task<> AppCoordinator::requestScreenPermission()
{
    updateSettings(rememberTheRequest);
    if (m_parts.session.permissions)
        co_await m_parts.session.permissions->requestScreenCapture();
}

LibrarianService::Dependencies AppCoordinator::librarianDependencies()
{
    return {
        .providerProvider = [this] { return makeLibrarianProvider(); },
        .configProvider = [this] { return m_lanes.resolvedLibrarianModel(m_parts.environment()); },
        .observationLinkHook = [this](const QUuid& id) { m_memory.sessions.linkObservation(id); },
        .mayRemember = [this] { return m_settings.settings().memoryEnabled; },
        .calendar = m_parts.calendar,
        .clock = m_parts.clock,
    };
}

SessionRolloverService::Dependencies AppCoordinator::rolloverDependencies()
{
    return {
        .memory = m_memory,
        .history = m_history,
        .librarian = m_librarian,
        .chatArchiveDirectory = m_directory,
        .activitySummaryProvider =
            [this](
                TimePoint from, TimePoint to) { return m_activityDesk.activitySummary(from, to); },
    };
}

MemoryDesk::Dependencies AppCoordinator::memoryDeskDependencies()
{
    return {
        .memory = m_memory,
        .history = m_history,
        .chat = m_chat,
        .retrieval = m_retrieval,
        .proposals = m_proposals,
        .directory = m_directory,
        .calendar = m_parts.calendar,
        .clock = m_parts.clock,
        .changed = [this] { refresh(m_parts.clock()); },
        .forgetting = [this] { m_librarian.forget(); },
    };
}

ProposalDesk::Dependencies AppCoordinator::proposalDeskDependencies()
{
    return {
        .proposals = m_proposals,
        .settings = m_settings,
        .rules = m_rules,
        .memory = m_memory,
        .history = m_history,
        .chat = m_chat,
        .modes = m_modes,
        .calendarProvider = *m_parts.calendarProvider,
        .calendar = m_parts.calendar,
        .clock = m_parts.clock,
        .changed = [this] { refresh(m_parts.clock()); },
    };
}

std::vector<Tool> AppCoordinator::everyTool()
{
    auto tools = MemoryTools::tools({ m_retrieval, m_memory, m_parts.clock });
    std::ranges::move(RuleTools::tools(m_rules), std::back_inserter(tools));
    std::ranges::move(FolderTools::tools(m_appData.get()), std::back_inserter(tools));
    return tools;
}

Task<std::vector<AppDataSource>> AppCoordinator::appDataSources()
{
    co_return m_settings.settings().appDataSources;
}

MemorySnapshot AppCoordinator::memorySnapshot(TimePoint now)
{
    const auto revision = m_memory.revision();
    if (std::exchange(m_publishedMemoryRevision, revision) == revision)
        return m_state.memory;
    return MemorySnapshot::of(m_memory, now);
}

std::optional<QString> AppCoordinator::storageProblem() const
{
    if (m_directoryProblem)
        return m_directoryProblem;
    const auto& problems = m_parts.directory->health->problems;
    return problems.empty() ? std::nullopt : std::optional(problems.begin()->second);
}

} // namespace pobblewig
