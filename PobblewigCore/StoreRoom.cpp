#include "StoreRoom.h"

#include "foundation/Log.h"

namespace pobblewig {

namespace {

std::optional<QString> problem(const std::optional<DataDirectory>& directory)
{
    return directory ? directory->prepare() : std::nullopt;
}

std::optional<DataDirectory> usable(const std::optional<DataDirectory>& directory)
{
    return directory && directory->path.exists() ? directory : std::nullopt;
}

MigrationReport migrated(const std::optional<DataDirectory>& directory, TimePoint now)
{
    return directory ? MemoryMigration::run(*directory, now) : MigrationReport();
}

} // namespace

StoreRoom::StoreRoom(Parts parts)
    : m_moment(parts.moment)
    , m_health(parts.directory ? parts.directory->health : std::make_shared<StorageHealth>())
    , m_directoryProblem(problem(parts.directory))
    , m_directory(usable(parts.directory))
    , m_migrationReport(migrated(m_directory, m_moment.now()))
    , m_settings(m_directory, parts.keychain, parts.defaultCanvasBaseURL)
    , m_memory(m_directory, m_moment.calendar, parts.wording)
    , m_history(m_directory)
    , m_usage(m_directory, [this] { return m_moment.calendar().day(m_moment.now()); })
    , m_rules(m_directory)
    , m_proposals(m_directory, m_moment.clock)
{
}

Stores StoreRoom::stores()
{
    return { m_settings, m_memory, m_history, m_usage, m_rules, m_proposals };
}

std::optional<QString> StoreRoom::storageProblem() const
{
    if (m_directoryProblem)
        return m_directoryProblem;
    const auto& problems = m_health->problems;
    return problems.empty() ? std::nullopt : std::optional(problems.begin()->second);
}

bool StoreRoom::readAgain()
{
    const auto before = m_health->unreadable.size();
    if (before == 0)
        return false;
    m_settings.readAgain();
    m_memory.readAgain(m_moment.now());
    m_history.readAgain();
    m_usage.readAgain();
    m_rules.readAgain();
    m_proposals.readAgain();
    return m_health->unreadable.size() < before;
}

void StoreRoom::finishMigration()
{
    // What cannot be read for the moment only looks as if it were missing.
    if (!m_health->unreadable.empty())
        return;
    m_migrationReport.legacyChatAdopted = MemoryMigration::adoptLegacyChatIfNeeded(
        m_memory.sessions, m_history, m_moment.now(), m_moment.calendar());
    Log::line(QStringLiteral("buddy: ") + m_migrationReport.migrationSummary());
}

} // namespace pobblewig
