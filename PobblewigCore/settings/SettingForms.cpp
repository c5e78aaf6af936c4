#include "settings/SettingForms.h"

#include "settings/AccentChoice.h"
#include "settings/ActionAutonomy.h"
#include "settings/ThemePreference.h"

#include "foundation/Text.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

#include <algorithm>

namespace pobblewig {

namespace {

struct Question {
    QStringView actionClass;
    const char* label;
};

constexpr std::array switchableQuestions {
    Question { ActionAutonomy::calendarWrite,
        QT_TRANSLATE_NOOP("SettingForms", "Adding to the calendar") },
    Question {
        ActionAutonomy::reminderWrite, QT_TRANSLATE_NOOP("SettingForms", "Adding a reminder") },
    Question {
        ActionAutonomy::settingsChange, QT_TRANSLATE_NOOP("SettingForms", "Changing a setting") },
};

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

constexpr qsizetype longestURL = 300;
constexpr qsizetype longestPath = 1000;

bool isFolderName(const QString& name)
{
    static const QRegularExpression partOfPath(QStringLiteral("[/~]"));
    const auto isPlain = Text::plainLine(name, SettingForms::longestFolderName) == name;
    return !name.isEmpty() && isPlain && !name.contains(partOfPath);
}

bool isBlank(const QString& given)
{
    return given.trimmed().isEmpty();
}

const MascotColorScheme& currentScheme(const AppSettings& settings)
{
    return MascotColorScheme::forID(
        settings.mascotColorScheme, Mascot::userFacing(settings.mascot));
}

} // namespace

auto SettingForms::personas(const S&) -> Options
{
    auto personas = named<CompanionPersona>();
    for (size_t index = 0; index < personas.size(); ++index)
        personas[index].note = tagline(CompanionPersona(index));
    return personas;
}

QString SettingForms::meantPersona(const QString& given)
{
    return given.trimmed();
}

auto SettingForms::options(Mascot::All mascots) -> Options
{
    Options offered;
    for (const auto& mascot : mascots) {
        if (mascot.offer != Mascot::Offer::nobody)
            offered.push_back({ mascot.id, mascot.displayName });
    }
    return offered;
}

auto SettingForms::options(std::span<const MascotColorScheme> schemes) -> Options
{
    Options offered;
    for (const auto& scheme : schemes)
        offered.push_back({ scheme.id, scheme.displayName });
    return offered;
}

auto SettingForms::mascots(const S&) -> Options
{
    return options(Mascot::all());
}

QString SettingForms::mascot(const S& settings)
{
    return Mascot::userFacing(settings.mascot).id;
}

QString SettingForms::meantMascot(const QString& given)
{
    auto name = given.trimmed().toLower();
    for (const auto& article : { QStringLiteral("a "), QStringLiteral("an ") }) {
        if (name.startsWith(article))
            name.remove(0, article.size());
    }
    return name;
}

QString SettingForms::mascotAndColors(const S& settings)
{
    return QStringLiteral("%1 (%2)").arg(
        Mascot::userFacing(settings.mascot).displayName, currentScheme(settings).displayName);
}

void SettingForms::fitColors(S& settings)
{
    settings.mascotColorScheme = currentScheme(settings).id;
}

auto SettingForms::colorSchemes(const S& settings) -> Options
{
    return options(Mascot::userFacing(settings.mascot).schemes);
}

QString SettingForms::colorScheme(const S& settings)
{
    return currentScheme(settings).id;
}

auto SettingForms::themes(const S&) -> Options
{
    return named<ThemePreference>();
}

QString SettingForms::theme(const S& settings)
{
    return EnumNames::text(themePreference(settings.themePreference));
}

auto SettingForms::dateLanguages(const S&) -> Options
{
    Options languages { { QStringLiteral("system"),
        QCoreApplication::translate("SettingCatalog", "Same as the system") } };
    for (const auto* const name : { "ar_EG", "cs_CZ", "da_DK", "de_DE", "el_GR", "en_GB", "en_US",
             "es_ES", "fa_IR", "fi_FI", "fr_FR", "he_IL", "hi_IN", "id_ID", "it_IT", "ja_JP",
             "ko_KR", "nb_NO", "nl_NL", "pl_PL", "pt_BR", "pt_PT", "ru_RU", "sv_SE", "tr_TR",
             "uk_UA", "vi_VN", "zh_CN", "zh_TW" }) {
        const QLocale locale(QString::fromLatin1(name));
        languages.push_back({ locale.name(),
            QStringLiteral("%1 (%2)").arg(
                locale.nativeLanguageName(), locale.nativeTerritoryName()) });
    }
    return languages;
}

QString SettingForms::dateLanguage(const S& settings)
{
    const auto known = dateLanguages(settings);
    const auto found = std::ranges::find(known, settings.dateLanguage, &SettingOption::id);
    return found == known.end() ? known.front().id : found->id;
}

auto SettingForms::accents(const S&) -> Options
{
    return named<AccentChoice>();
}

QString SettingForms::accent(const S& settings)
{
    return EnumNames::text(accentChoice(settings.accentChoice));
}

auto SettingForms::roles(const S&) -> Options
{
    return named<AssistantRole>();
}

QStringList SettingForms::chosenRoles(const S& settings)
{
    QStringList ids;
    for (const auto role : settings.roles)
        ids.append(EnumNames::text(role));
    return ids;
}

void SettingForms::setRoles(S& settings, const QStringList& ids)
{
    settings.roles.clear();
    for (const auto& id : ids)
        settings.roles.insert(EnumNames::fromName<AssistantRole>(id.toStdString()).value());
}

QString SettingForms::rolesInWords(const S& settings)
{
    QStringList names;
    for (const auto role : settings.roles)
        names.append(displayName(role));
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(" + "));
}

auto SettingForms::questions(const S&) -> Options
{
    Options classes;
    for (const auto& [actionClass, label] : switchableQuestions)
        classes.push_back(
            { actionClass.toString(), QCoreApplication::translate("SettingForms", label) });
    return classes;
}

QStringList SettingForms::askedQuestions(const S& settings)
{
    QStringList ids;
    for (const auto& question : switchableQuestions) {
        if (ActionAutonomy::requiresConfirmation(question.actionClass, settings))
            ids.append(question.actionClass.toString());
    }
    return ids;
}

void SettingForms::setQuestions(S& settings, const QStringList& ids)
{
    for (const auto& question : switchableQuestions) {
        const auto id = question.actionClass.toString();
        settings.actionConfirmations[id] = ids.contains(id);
    }
}

bool SettingForms::isFolderPath(const QString& path)
{
    const auto isBelowHome = path == u"~" || path.startsWith(u"~/");
    // Blanks may repeat, but nothing in the path may be invisible.
    const auto isPlain = Text::plainLine(path, longestPath) == path.simplified();
    return isPlain && (isBelowHome || QDir::isAbsolutePath(path));
}

bool SettingForms::isSecureURL(const QString& text)
{
    static const QRegularExpression plain(
        QStringLiteral(
            R"(\Ahttps://[a-z0-9]([a-z0-9.-]{0,251}[a-z0-9])?(:[0-9]{1,5})?([/?#][!-~]*)?\z)"),
        QRegularExpression::CaseInsensitiveOption);
    return text.size() <= longestURL && plain.match(text).hasMatch();
}

QStringList SettingForms::excludedApps(const S& settings)
{
    return { settings.excludedBundleIDs.begin(), settings.excludedBundleIDs.end() };
}

bool SettingForms::setExcludedApps(S& settings, const JSONValue& value)
{
    auto ids = json::decode<std::vector<QString>>(value.toJson());
    if (!ids || std::ranges::any_of(*ids, isBlank))
        return false;
    settings.excludedBundleIDs = *std::move(ids);
    settings.restoreDefaultExclusions();
    return true;
}

QString SettingForms::excludedAppsInNumbers(const S& settings)
{
    return QStringLiteral("%1 bundle IDs").arg(settings.excludedBundleIDs.size());
}

QStringList SettingForms::dataSources(const S& settings)
{
    QStringList sources;
    for (const auto& source : settings.appDataSources) {
        const auto form =
            source.enabled ? QStringLiteral("%1 (%2)") : QStringLiteral("%1 (%2, off)");
        sources.append(form.arg(source.rootPath, source.name));
    }
    return sources;
}

bool SettingForms::setDataSources(S& settings, const JSONValue& value)
{
    const auto folders = json::decode<std::vector<NamedFolder>>(value.toJson());
    if (!folders)
        return false;
    std::vector<AppDataSource> sources;
    for (const auto& folder : *folders) {
        const auto name = folder.name.trimmed();
        const auto path = folder.path.trimmed();
        if (!isFolderName(name) || !SettingForms::isFolderPath(path))
            return false;
        sources.push_back({ .id = QUuid::createUuid(), .name = name, .rootPath = path });
    }
    settings.appDataSources = std::move(sources);
    return true;
}

QString SettingForms::dataSourcesInNumbers(const S& settings)
{
    return QString::number(settings.appDataSources.size());
}

} // namespace pobblewig
