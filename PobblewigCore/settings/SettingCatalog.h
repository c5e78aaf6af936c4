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
    /// Only the user may change it.
    none,
    /// The assistant may change it, but no prompt mentions it.
    accepted,
    /// The assistant may change it, and prompts say so.
    proposed,
};

/// Which changes by the assistant ask the user even if the confirmation is switched off.
enum class AlwaysAsks { none, toSwitchOff, all };

/// The unit of a number.
struct SettingUnit {
    /// "%1 minute" and "%1 minutes", to be translated.
    const char* one;
    const char* many;
    /// A short form that follows the number where space is limited.
    QStringView suffix;
};

/// One of the values that a choice offers.
struct SettingOption {
    /// The value as stored.
    QString id;
    QString label;
    /// One line that helps the user choose, or nothing.
    QString note = {};
};

struct SwitchSetting {
    bool AppSettings::*field;
};

/// A whole number. A value out of bounds becomes the nearest bound.
struct NumberSetting {
    int AppSettings::*field;
    int lowest;
    int highest;
    const SettingUnit* unit;
};

/// A factor, where 1.0 is 100 percent, also clamped to its bounds.
struct PercentSetting {
    double AppSettings::*field;
    int lowest;
    int highest;
};

/// One of several options.
struct ChoiceSetting {
    std::vector<SettingOption> (*options)(const AppSettings& settings);
    QString (*chosen)(const AppSettings& settings);
    /// Receives the id of an option.
    void (*choose)(AppSettings& settings, const QString& id);
    /// The id that a model means, compared without regard to case. If null, only the exact id is
    /// accepted.
    QString (*meant)(const QString& given) = nullptr;
    /// A text that a refusal adds after the options.
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

/// A list that the user edits.
struct ListSetting {
    /// The entries as the user reads them.
    QStringList (*entries)(const AppSettings& settings);
    /// Replaces the whole list. Returns false and changes nothing if the value is not a valid list.
    bool (*replace)(AppSettings& settings, const JSONValue& value);
    /// "an array of bundle-ID strings"
    QStringView form;
    /// What the array contains: "strings".
    QStringView items;
};

using SettingKind = std::variant<SwitchSetting, NumberSetting, PercentSetting, ChoiceSetting,
    ChoicesSetting, TextSetting, ListSetting>;

/// One of the user's settings. State that the program merely remembers is not in the table.
struct Setting {
    /// The key in "settings.json".
    QStringView key;
    /// The label for the user, to be translated.
    const char* label;
    SettingsPage page;
    AssistantAccess assistant;
    AlwaysAsks alwaysAsks = AlwaysAsks::none;
    SettingKind kind;
    /// One line for the user about what it does, to be translated, or nothing.
    const char* explanation = nullptr;
    /// A sample value for models, in place of a description.
    QStringView sample = {};
    /// The name of the setting in the result of a change; if empty, its key.
    QStringView subject = {};
    /// The new state in the result of a change, if it is more than the value.
    QString (*summary)(const AppSettings& settings) = nullptr;
    /// Changes other settings that depend on this one.
    void (*followUp)(AppSettings& settings) = nullptr;
};

/// The single table of the settings. The checks, the texts for the user, the prompts and the
/// settings window all read it: a new setting needs only a row and a field.
namespace SettingCatalog {

using Rows = std::span<const Setting>;

/// In the order in which prompts and pages list them.
Rows all();

/// Returns null for an unknown key.
const Setting* find(const QString& key, Rows rows = all());

/// The settings on one page.
std::vector<const Setting*> onPage(SettingsPage page, Rows rows = all());

/// The title of a page, for the user.
QString title(SettingsPage page);

} // namespace SettingCatalog

} // namespace pobblewig
