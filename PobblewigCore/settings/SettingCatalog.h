#pragma once

#include "foundation/JSONValue.h"
#include "settings/AppSettings.h"

#include <QStringList>

#include <span>
#include <variant>

namespace pobblewig {

/// The pages of the settings window, in their order.
enum class SettingsPage { general, companion, activity, connections, memoryAndPrivacy };

/// What the assistant may do with a setting.
enum class AssistantAccess {
    /// The user's alone.
    none,
    /// May change it, but no prompt speaks of it.
    accepted,
    /// May change it and is told so. The user can switch the question off.
    proposed,
    /// Likewise, but the user is always asked.
    alwaysAsked
};

/// What a number counts.
struct SettingUnit {
    /// "%1 minute" and "%1 minutes", to be translated.
    const char* one;
    const char* many;
    /// What follows the number where it must be short.
    QStringView suffix;
};

/// One of the values that a choice offers.
struct SettingOption {
    /// As it is stored.
    QString id;
    QString label;
    /// One line to choose by, or nothing.
    QString note = {};
};

struct SwitchSetting {
    bool AppSettings::*field;
};

/// A whole number. One that is out of bounds becomes the nearest bound.
struct NumberSetting {
    int AppSettings::*field;
    int lowest;
    int highest;
    const SettingUnit* unit;
};

/// A factor of 1.0 for 100 percent, likewise kept within its bounds.
struct PercentSetting {
    double AppSettings::*field;
    int lowest;
    int highest;
};

/// One of several options.
struct ChoiceSetting {
    std::vector<SettingOption> (*options)(const AppSettings& settings);
    QString (*chosen)(const AppSettings& settings);
    /// Takes the id of an option.
    void (*choose)(AppSettings& settings, const QString& id);
    /// The id that a model means, whatever the case of its letters. Without it nothing but the id
    /// itself will do.
    QString (*meant)(const QString& given) = nullptr;
    /// What a refusal adds to the options.
    QStringView remark = {};
};

/// Any number of the options.
struct ChoicesSetting {
    std::vector<SettingOption> (*options)(const AppSettings& settings);
    QStringList (*chosen)(const AppSettings& settings);
    void (*choose)(AppSettings& settings, const QStringList& ids);
};

struct TextSetting {
    QString AppSettings::*field;
    bool (*accepts)(const QString& text);
    /// "an https:// URL"
    QStringView form;
};

/// A list that the user makes.
struct ListSetting {
    /// In words.
    QStringList (*entries)(const AppSettings& settings);
    /// Replaces the whole list. False, and no change, if the value is no such list.
    bool (*replace)(AppSettings& settings, const JSONValue& value);
    /// "an array of bundle-ID strings"
    QStringView form;
    /// What the array holds: "strings".
    QStringView items;
};

using SettingKind = std::variant<SwitchSetting, NumberSetting, PercentSetting, ChoiceSetting,
    ChoicesSetting, TextSetting, ListSetting>;

/// A setting of the user's. What the program merely remembers has none.
struct Setting {
    /// As in "settings.json".
    QStringView key;
    /// What the user reads, to be translated.
    const char* label;
    SettingsPage page;
    AssistantAccess assistant;
    SettingKind kind;
    /// An example for models, in place of a description.
    QStringView sample = {};
    /// What the result of a change calls it; without it, its key.
    QStringView subject = {};
    /// What the result says it now is, if that is more than its value.
    QString (*summary)(const AppSettings& settings) = nullptr;
    /// What else changes with it.
    void (*followUp)(AppSettings& settings) = nullptr;
};

/// The one table of the settings. The checks, the texts for the user, the prompts and the settings
/// window read it: a row is all that a new setting takes, besides its field.
namespace SettingCatalog {

using Rows = std::span<const Setting>;

/// In the order in which prompts and pages list them.
Rows all();

/// Null for an unknown key.
const Setting* find(const QString& key, Rows rows = all());

/// Those of one page.
std::vector<const Setting*> onPage(SettingsPage page, Rows rows = all());

/// The title of a page, for the user.
QString title(SettingsPage page);

} // namespace SettingCatalog

} // namespace pobblewig
