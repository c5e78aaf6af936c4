#include "settings/SettingForms.h"

#include <QStringList>

#include <algorithm>

namespace pobblewig {

namespace {

template <typename Value>
std::optional<Value> decoded(const JSONValue& value)
{
    auto outcome = json::decode<Value>(value.toJson());
    if (!outcome)
        return std::nullopt;
    return *std::move(outcome);
}

QString text(const JSONValue& value)
{
    return value.string() ? *value.string() : QString();
}

template <typename Enum>
QStringList namesOf()
{
    QStringList names;
    for (const auto name : EnumNames::names<Enum>) {
        if (!name.empty())
            names.append(QString::fromLatin1(name.data(), qsizetype(name.size())));
    }
    return names;
}

template <typename Enum>
QString allNames()
{
    return namesOf<Enum>().join(QStringLiteral(", "));
}

bool isBlank(const QString& given)
{
    return given.trimmed().isEmpty();
}

const std::vector<MascotColorScheme>& currentSchemes(const AppSettings& settings)
{
    return MascotColorScheme::schemes(userFacingMascot(settings.mascot));
}

struct NamedFolder {
    QString name;
    QString path;

    static constexpr auto jsonFields()
    {
        return std::tuple {
            json::required("name", &NamedFolder::name),
            json::required("path", &NamedFolder::path),
        };
    }
};

} // namespace

std::optional<CoachMode> SettingForms::Mode::read(const JSONValue& value, const AppSettings&)
{
    return decoded<CoachMode>(value);
}

QString SettingForms::Mode::refusal(const AppSettings&)
{
    return QStringLiteral("mode must be one of: ") + allNames<CoachMode>();
}

QString SettingForms::Mode::write(CoachMode mode, AppSettings& settings)
{
    settings.mode = mode;
    settings.modeRevertAt.reset();
    return QStringLiteral("mode → ") + displayName(mode);
}

auto SettingForms::Roles::read(const JSONValue& value, const AppSettings&) -> std::optional<Value>
{
    return decoded<Value>(value);
}

QString SettingForms::Roles::refusal(const AppSettings&)
{
    return QStringLiteral("roles must be an array of: ") + allNames<AssistantRole>();
}

QString SettingForms::Roles::write(const Value& roles, AppSettings& settings)
{
    settings.roles = roles;
    QStringList names;
    for (const auto role : roles)
        names.append(displayName(role));
    return QStringLiteral("roles → ")
        + (names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(" + ")));
}

std::optional<CompanionPersona> SettingForms::Persona::read(
    const JSONValue& value, const AppSettings&)
{
    const auto given = text(value).trimmed();
    for (const auto& name : namesOf<CompanionPersona>()) {
        if (name.compare(given, Qt::CaseInsensitive) == 0)
            return decoded<CompanionPersona>(name);
    }
    return std::nullopt;
}

QString SettingForms::Persona::refusal(const AppSettings&)
{
    return QStringLiteral("companionPersona must be one of: ") + allNames<CompanionPersona>();
}

QString SettingForms::Persona::write(CompanionPersona persona, AppSettings& settings)
{
    settings.companionPersona = persona;
    return QStringLiteral("persona → ") + displayName(persona);
}

std::optional<Mascot> SettingForms::Form::read(const JSONValue& value, const AppSettings&)
{
    auto name = text(value).trimmed().toLower();
    for (const auto article : { u"a ", u"an " }) {
        if (name.startsWith(QStringView(article)))
            name.remove(0, QStringView(article).size());
    }
    const auto mascot = decoded<Mascot>(name);
    return mascot == Mascot::skrit ? std::nullopt : mascot;
}

QString SettingForms::Form::refusal(const AppSettings&)
{
    return QStringLiteral("mascot must be one of: mouse, axolotl, meme");
}

QString SettingForms::Form::write(Mascot mascot, AppSettings& settings)
{
    const auto& scheme = MascotColorScheme::forID(settings.mascotColorScheme, mascot);
    settings.mascot = EnumNames::text(mascot);
    settings.mascotColorScheme = scheme.id;
    return QStringLiteral("form → %1 (%2)").arg(displayName(mascot), scheme.displayName);
}

std::optional<MascotColorScheme> SettingForms::ColorScheme::read(
    const JSONValue& value, const AppSettings& current)
{
    const auto& schemes = currentSchemes(current);
    const auto found = std::ranges::find(schemes, text(value), &MascotColorScheme::id);
    return found == schemes.end() ? std::nullopt : std::optional(*found);
}

QString SettingForms::ColorScheme::refusal(const AppSettings& current)
{
    QStringList ids;
    for (const auto& scheme : currentSchemes(current))
        ids.append(scheme.id);
    return QStringLiteral("mascotColorScheme must be one of: %1 (for the current mascot)")
        .arg(ids.join(QStringLiteral(", ")));
}

QString SettingForms::ColorScheme::write(const MascotColorScheme& scheme, AppSettings& settings)
{
    settings.mascotColorScheme = scheme.id;
    return QStringLiteral("color scheme → ") + scheme.displayName;
}

std::optional<bool> SettingForms::ObservationPause::read(const JSONValue& value, const AppSettings&)
{
    return decoded<bool>(value);
}

QString SettingForms::ObservationPause::refusal(const AppSettings&)
{
    return QStringLiteral("pausedIndefinitely must be a boolean");
}

QString SettingForms::ObservationPause::write(bool paused, AppSettings& settings)
{
    settings.pausedIndefinitely = paused;
    if (!paused)
        settings.pausedUntil.reset();
    return QStringLiteral("observation pause → ")
        + (paused ? QStringLiteral("on") : QStringLiteral("off"));
}

auto SettingForms::ExcludedApps::read(const JSONValue& value, const AppSettings&)
    -> std::optional<Value>
{
    auto ids = decoded<Value>(value);
    return ids && std::ranges::none_of(*ids, isBlank) ? ids : std::nullopt;
}

QString SettingForms::ExcludedApps::refusal(const AppSettings&)
{
    return QStringLiteral("excludedBundleIDs must be an array of bundle-ID strings");
}

QString SettingForms::ExcludedApps::write(Value ids, AppSettings& settings)
{
    settings.excludedBundleIDs = std::move(ids);
    settings.restoreDefaultExclusions();
    return QStringLiteral("excluded apps → %1 bundle IDs").arg(settings.excludedBundleIDs.size());
}

std::optional<QString> SettingForms::CanvasURL::read(const JSONValue& value, const AppSettings&)
{
    constexpr QStringView scheme = u"https://";
    const auto url = text(value);
    return url.startsWith(scheme) && url.size() > scheme.size() ? std::optional(url) : std::nullopt;
}

QString SettingForms::CanvasURL::refusal(const AppSettings&)
{
    return QStringLiteral("canvasBaseURL must be an https:// URL");
}

QString SettingForms::CanvasURL::write(const QString& url, AppSettings& settings)
{
    settings.canvasBaseURL = url;
    return QStringLiteral("Canvas URL → ") + url;
}

auto SettingForms::DataSources::read(const JSONValue& value, const AppSettings&)
    -> std::optional<Value>
{
    const auto folders = decoded<std::vector<NamedFolder>>(value);
    if (!folders)
        return std::nullopt;
    Value sources;
    for (const auto& folder : *folders) {
        if (isBlank(folder.name) || isBlank(folder.path))
            return std::nullopt;
        sources.push_back({
            .id = QUuid::createUuid(),
            .name = folder.name.trimmed(),
            .rootPath = folder.path.trimmed(),
        });
    }
    return sources;
}

QString SettingForms::DataSources::refusal(const AppSettings&)
{
    return QStringLiteral(
        R"(appDataSources must be an array of {"name":"...","path":"..."} entries)");
}

QString SettingForms::DataSources::write(Value sources, AppSettings& settings)
{
    settings.appDataSources = std::move(sources);
    return QStringLiteral("app data sources → %1").arg(settings.appDataSources.size());
}

} // namespace pobblewig
