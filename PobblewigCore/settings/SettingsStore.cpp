#include "settings/SettingsStore.h"

#include "settings/ActionAutonomy.h"

namespace pobblewig {

SettingsStore::SettingsStore(const std::optional<DataDirectory>& directory,
    KeychainHelper& keychain, QString defaultCanvasBaseURL)
    : m_file(directory, QStringLiteral("settings.json"), QStringLiteral("settings"))
    , m_keychain(keychain)
    , m_defaultCanvasBaseURL(std::move(defaultCanvasBaseURL))
    , m_settings(m_file.load<AppSettings>())
{
    m_settings.restoreDefaultExclusions();
    if (!m_file.isUnreadable())
        return;
    m_settings.pausedIndefinitely = true;
    m_settings.memoryEnabled = false;
}

bool SettingsStore::isPaused(TimePoint at) const
{
    return m_settings.pausedIndefinitely
        || (m_settings.pausedUntil && *m_settings.pausedUntil > at);
}

void SettingsStore::update(const std::function<void(AppSettings&)>& change)
{
    change(m_settings);
    m_file.save(m_settings);
}

std::vector<QString> SettingsStore::allowances() const
{
    std::vector<QString> classes;
    for (const auto& [actionClass, asks] : m_settings.actionConfirmations) {
        if (!ActionAutonomy::requiresConfirmation(actionClass, m_settings))
            classes.push_back(actionClass);
    }
    return classes;
}

void SettingsStore::allow(const QString& actionClass, TimePoint now)
{
    update(
        [&](AppSettings& settings) { ActionAutonomy::setAsks(settings, actionClass, false, now); });
}

void SettingsStore::revokeAllowance(const QString& actionClass)
{
    update([&](AppSettings& settings) {
        ActionAutonomy::setAsks(settings, actionClass, true, {});
        settings.actionConfirmations.erase(actionClass);
    });
}

void SettingsStore::readAgain()
{
    auto kept = m_file.loadAgain<AppSettings>();
    if (!kept)
        return;
    m_settings = *std::move(kept);
    m_settings.restoreDefaultExclusions();
    m_file.save(m_settings);
}

QString SettingsStore::resolvedCanvasBaseURL(const Environment& environment) const
{
    const auto& chosen = m_settings.canvasBaseURL;
    if (!chosen.isEmpty() && chosen != AppSettings::defaultCanvasBaseURL())
        return chosen;
    return variable(environment, QStringLiteral("CANVAS_BASE_URL"))
        .value_or(m_defaultCanvasBaseURL);
}

auto SettingsStore::canvasAPIToken(Environment environment) -> Task<std::optional<QString>>
{
    const auto token = co_await kept(KeychainHelper::canvasAPITokenAccount);
    co_return token ? token : variable(environment, QStringLiteral("CANVAS_API_TOKEN"));
}

auto SettingsStore::classroomAccessToken(Environment environment) -> Task<std::optional<QString>>
{
    const auto token = co_await kept(KeychainHelper::classroomTokenAccount);
    if (token)
        co_return token;
    const auto first = QStringLiteral("GOOGLE_CLASSROOM_ACCESS_TOKEN");
    const auto name = environment.contains(first) ? first : QStringLiteral("CLASSROOM_API_TOKEN");
    co_return variable(environment, name);
}

Task<> SettingsStore::setCanvasAPIToken(std::optional<QString> token)
{
    return keep(KeychainHelper::canvasAPITokenAccount, std::move(token));
}

Task<> SettingsStore::setClassroomAccessToken(std::optional<QString> token)
{
    return keep(KeychainHelper::classroomTokenAccount, std::move(token));
}

auto SettingsStore::kept(QStringView account) -> Task<std::optional<QString>>
{
    const auto token = co_await m_keychain.read(account.toString());
    if (!token || token->isEmpty())
        co_return std::nullopt;
    co_return token;
}

Task<> SettingsStore::keep(QStringView account, std::optional<QString> token)
{
    if (token && !token->isEmpty())
        co_await m_keychain.write(account.toString(), *token);
    else
        co_await m_keychain.remove(account.toString());
}

} // namespace pobblewig
