#pragma once

#include "mascots/Mascot.h"
#include "settings/SettingCatalog.h"

/// How the rows of the catalog reach the settings that are more than a number or a switch.
namespace pobblewig::SettingForms {

using Options = std::vector<SettingOption>;
using S = AppSettings;

/// The cases of an enum.
template <typename Enum>
Options named()
{
    Options options;
    for (size_t index = 0; !EnumNames::names<Enum>[index].empty(); ++index)
        options.push_back({ EnumNames::text(Enum(index)), displayName(Enum(index)) });
    return options;
}

/// A choice that is stored as the case of an enum.
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

/// For a choice that is stored as a text.
template <QString S::*Field>
void store(S& settings, const QString& id)
{
    settings.*Field = id;
}

Options personas(const S& settings);
/// Space around the name does not matter.
QString meantPersona(const QString& given);

/// Without those that nobody can choose.
Options options(Mascot::All mascots);
Options options(std::span<const MascotColorScheme> schemes);

Options mascots(const S& settings);
QString mascot(const S& settings);
/// "An Axolotl" will do.
QString meantMascot(const QString& given);
QString mascotAndColors(const S& settings);
/// Colours that the mascot lacks become its first ones.
void fitColors(S& settings);

/// The colours of the current mascot only.
Options colorSchemes(const S& settings);
QString colorScheme(const S& settings);

Options themes(const S& settings);
QString theme(const S& settings);

Options accents(const S& settings);
QString accent(const S& settings);

Options roles(const S& settings);
QStringList chosenRoles(const S& settings);
void setRoles(S& settings, const QStringList& ids);
QString rolesInWords(const S& settings);

/// The classes of actions whose question the user can switch off; chosen are those that ask.
Options questions(const S& settings);
QStringList askedQuestions(const S& settings);
void setQuestions(S& settings, const QStringList& ids);

bool isSecureURL(const QString& text);

QStringList excludedApps(const S& settings);
bool setExcludedApps(S& settings, const JSONValue& value);
QString excludedAppsInNumbers(const S& settings);

QStringList dataSources(const S& settings);
/// Each folder gets a new id.
bool setDataSources(S& settings, const JSONValue& value);
QString dataSourcesInNumbers(const S& settings);

} // namespace pobblewig::SettingForms
