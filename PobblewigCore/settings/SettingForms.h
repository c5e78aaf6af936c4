#pragma once

#include "mascots/Mascot.h"
#include "settings/SettingCatalog.h"

/// How the rows of the catalog access settings other than numbers and switches.
namespace pobblewig::SettingForms {

using Options = std::vector<SettingOption>;
using S = AppSettings;

/// The cases of an enum as options.
template <typename Enum>
Options named()
{
    Options options;
    for (size_t index = 0; !EnumNames::names<Enum>[index].empty(); ++index)
        options.push_back({ EnumNames::text(Enum(index)), displayName(Enum(index)) });
    return options;
}

/// A choice that is stored as an enum case.
template <auto Field>
constexpr ChoiceSetting caseOf()
{
    using Enum = std::remove_cvref_t<decltype(std::declval<S>().*Field)>;
    return {
        .options = [](const S&) { return named<Enum>(); },
        .chosen = [](const S& settings) { return EnumNames::text(settings.*Field); },
        .choose =
            [](S& settings, const QString& id) {
                settings.*Field = EnumNames::fromName<Enum>(id.toStdString()).value();
            },
    };
}

/// Stores a choice that is kept as text.
template <QString S::*Field>
void store(S& settings, const QString& id)
{
    settings.*Field = id;
}

Options personas(const S& settings);
/// Ignores space around the name.
QString meantPersona(const QString& given);

/// Only the mascots that the user can choose.
Options options(Mascot::All mascots);
Options options(std::span<const MascotColorScheme> schemes);

Options mascots(const S& settings);
QString mascot(const S& settings);
/// Also accepts "An Axolotl".
QString meantMascot(const QString& given);
QString mascotAndColors(const S& settings);
/// Replaces colours that the mascot lacks with its first ones.
void fitColors(S& settings);

/// The colours of the current mascot only.
Options colorSchemes(const S& settings);
QString colorScheme(const S& settings);

Options themes(const S& settings);
QString theme(const S& settings);

/// The system's language, and those that many users read.
Options dateLanguages(const S& settings);
QString dateLanguage(const S& settings);

Options accents(const S& settings);
QString accent(const S& settings);

Options roles(const S& settings);
QStringList chosenRoles(const S& settings);
void setRoles(S& settings, const QStringList& ids);
QString rolesInWords(const S& settings);

/// The classes of actions whose confirmation can be switched off. Chosen are those that ask.
Options questions(const S& settings);
QStringList askedQuestions(const S& settings);
void setQuestions(S& settings, const QStringList& ids);

/// An https address with a plain host name and nothing in front of it, short enough to be shown
/// whole.
bool isSecureURL(const QString& text);

QStringList excludedApps(const S& settings);
bool setExcludedApps(S& settings, const JSONValue& value);
QString excludedAppsInNumbers(const S& settings);

/// The path of each folder, followed by its name.
QStringList dataSources(const S& settings);
inline constexpr qsizetype longestFolderName = 40;

/// An absolute path, or one below "~", in which nothing is invisible.
bool isFolderPath(const QString& path);

/// Gives each folder a new id. Refuses names that read like a path, and paths that cannot be shown
/// as they are.
bool setDataSources(S& settings, const JSONValue& value);
QString dataSourcesInNumbers(const S& settings);

} // namespace pobblewig::SettingForms
