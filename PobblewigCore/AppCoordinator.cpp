#include "AppCoordinator.h"

#include "SituationBuilder.h"
#include "foundation/Log.h"
#include "memory/ChatArchive.h"
#include "memory/SessionBoundary.h"

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 20s;

AppCoordinator::Parts withDirectory(AppCoordinator::Parts parts)
{
    if (!parts.directory) {
        JSONFileStore::migrateLegacyDefaultDirectory();
        spawn(parts.keychain->migrateFromLegacyService());
        parts.directory.emplace(JSONFileStore::defaultDirectory());
    }
    return parts;
}

std::optional<DataDirectory> usable(const DataDirectory& directory)
{
    return directory.path.exists() ? std::optional(directory) : std::nullopt;
}

QString modelLabel(const LLMConfiguration& model)
{
    if (model.modelID == model.providerName)
        return model.modelID;
    return QStringLiteral("%1 (%2)").arg(model.modelID, model.providerName);
}

} // namespace

AppCoordinator::AppCoordinator(Parts parts)
    : m_parts(withDirectory(std::move(parts)))
    , m_directoryProblem(m_parts.directory->prepare())
    , m_directory(usable(*m_parts.directory))
    , m_market(MarketConfig::load(m_parts.environment()))
    , m_settings(m_directory, *m_parts.keychain, m_market.defaultCanvasBaseUrl)
    , m_history(m_directory)
    , m_usage(m_directory)
    , m_lanes(*m_parts.keychain, m_market)
    , m_providers(*m_parts.http, m_lanes, m_parts.environment)
    , m_chat(m_history, m_usage, chatDependencies())
{
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
    refresh(now);
    co_return;
}

void AppCoordinator::refresh(TimePoint now)
{
    PublishedState state {
        .settings = m_settings.settings(),
        .isPaused = m_settings.isPaused(now),
        .usage = m_usage.snapshot(),
        .modelLabel = m_state.modelLabel,
        .storageProblem = storageProblem(),
        .keyring = m_parts.keychain->state(),
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
    const auto now = m_parts.clock();
    const auto& messages = m_history.messages();
    if (messages.empty() || m_chat.isStreaming())
        return;
    if (m_directory) {
        const auto dayKey = SessionBoundary::dayKey(now, m_parts.calendar());
        const auto archived =
            ChatArchive::write(*m_directory, messages, dayKey, QUuid::createUuid());
        if (!archived) {
            Log::line(QStringLiteral("buddy: failed to archive chat: %1")
                          .arg(archived.error().description()));
            return refresh(now);
        }
    }
    m_history.clear();
    m_chat.reload();
    refresh(now);
}

Task<> AppCoordinator::startUp()
{
    co_await publishModelLabel();
    co_await pollOnce(m_parts.clock());
}

Task<> AppCoordinator::afterChatTurn()
{
    co_await publishModelLabel();
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

Task<MainModelConfig> AppCoordinator::mainConfig()
{
    return m_lanes.resolvedMainModel(m_parts.environment());
}

Task<SituationSnapshot> AppCoordinator::buildSituation()
{
    co_return SituationBuilder::situation(
        m_settings.settings(), m_settings.isPaused(m_parts.clock()));
}

ChatService::Dependencies AppCoordinator::chatDependencies()
{
    return {
        .mainProvider = [this] { return makeMainProvider(); },
        .visionProvider = [this] { return m_providers.makeVisionProvider(); },
        .mainConfig = [this] { return mainConfig(); },
        .situationProvider = [this] { return buildSituation(); },
        .clock = m_parts.clock,
    };
}

std::optional<QString> AppCoordinator::storageProblem() const
{
    if (m_directoryProblem)
        return m_directoryProblem;
    const auto& problems = m_parts.directory->health->problems;
    return problems.empty() ? std::nullopt : std::optional(problems.begin()->second);
}

} // namespace pobblewig
