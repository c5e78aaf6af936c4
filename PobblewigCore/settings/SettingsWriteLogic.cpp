#include "settings/SettingsWriteLogic.h"

#include "foundation/Overloaded.h"
#include "settings/SettingForms.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using Outcome = tl::expected<QString, SettingsWriteError>;

struct Switch {
    bool AppSettings::*field;
};

struct Number {
    int AppSettings::*field;
    int lowest;
    int highest;
    QStringView unit;
};

struct Special {
    bool (*accepts)(const JSONValue& value, const AppSettings& current);
    QString (*refusal)(const AppSettings& current);
    /// The summary, or nothing for a value that cannot be read.
    std::optional<QString> (*apply)(const JSONValue& value, AppSettings& settings);
    QStringView expectedType;
};

struct Setting {
    QStringView key;
    std::variant<Switch, Number, Special> kind;
};

template <typename Form>
constexpr Special special(QStringView expectedType)
{
    return {
        .accepts =
            [](const JSONValue& value, const AppSettings& current) {
                return Form::read(value, current).has_value();
            },
        .refusal = Form::refusal,
        .apply = [](const JSONValue& value, AppSettings& settings) -> std::optional<QString> {
            auto accepted = Form::read(value, settings);
            if (!accepted)
                return std::nullopt;
            return Form::write(*std::move(accepted), settings);
        },
        .expectedType = expectedType,
    };
}

constexpr QStringView minutes = u" min";
constexpr QStringView hours = u"h";

using S = AppSettings;
constexpr std::array settingsTable {
    Setting { u"mode", special<SettingForms::Mode>(u"a string") },
    Setting { u"roles", special<SettingForms::Roles>(u"an array") },
    Setting { u"companionPersona", special<SettingForms::Persona>(u"a string") },
    Setting { u"mascot", special<SettingForms::Form>(u"a string") },
    Setting { u"mascotColorScheme", special<SettingForms::ColorScheme>(u"a string") },
    Setting { u"pausedIndefinitely", special<SettingForms::ObservationPause>(u"a boolean") },
    Setting { u"excludedBundleIDs", special<SettingForms::ExcludedApps>(u"an array") },
    Setting { u"maxActivitySessions", Number { &S::maxActivitySessions, 100, 2000, u"" } },
    Setting { u"activityRetentionDays", Number { &S::activityRetentionDays, 1, 90, u" days" } },
    Setting { u"canvasBaseURL", special<SettingForms::CanvasURL>(u"a string") },
    Setting { u"canvasSyncEnabled", Switch { &S::canvasSyncEnabled } },
    Setting {
        u"canvasSyncIntervalMinutes", Number { &S::canvasSyncIntervalMinutes, 15, 360, minutes } },
    Setting { u"canvasDeadlineRemindersEnabled", Switch { &S::canvasDeadlineRemindersEnabled } },
    Setting {
        u"canvasDeadlineReminderHours", Number { &S::canvasDeadlineReminderHours, 6, 72, hours } },
    Setting { u"classroomSyncEnabled", Switch { &S::classroomSyncEnabled } },
    Setting { u"classroomSyncIntervalMinutes",
        Number { &S::classroomSyncIntervalMinutes, 15, 360, minutes } },
    Setting {
        u"classroomDeadlineRemindersEnabled", Switch { &S::classroomDeadlineRemindersEnabled } },
    Setting { u"classroomDeadlineReminderHours",
        Number { &S::classroomDeadlineReminderHours, 6, 72, hours } },
    Setting { u"calendarSyncEnabled", Switch { &S::calendarSyncEnabled } },
    Setting { u"calendarSyncIntervalMinutes",
        Number { &S::calendarSyncIntervalMinutes, 15, 360, minutes } },
    Setting { u"remindersSyncEnabled", Switch { &S::remindersSyncEnabled } },
    Setting { u"cloudSyncEnabled", Switch { &S::cloudSyncEnabled } },
    Setting {
        u"cloudSyncIntervalMinutes", Number { &S::cloudSyncIntervalMinutes, 15, 120, minutes } },
    Setting { u"appDataSources", special<SettingForms::DataSources>(u"an array") },
};

const Setting* settingOf(const QString& key)
{
    const auto* found = std::ranges::find(settingsTable, key, &Setting::key);
    return found == settingsTable.end() ? nullptr : found;
}

QString mustBe(const QString& key, QStringView type)
{
    return QStringLiteral("%1 must be %2").arg(key, type);
}

std::optional<QString> refusal(
    const Setting& setting, const JSONValue& value, const AppSettings& current)
{
    const auto key = setting.key.toString();
    const auto check = Overloaded {
        [&](const Switch&) { return value.boolean() ? QString() : mustBe(key, u"a boolean"); },
        [&](const Number&) { return value.number() ? QString() : mustBe(key, u"a number"); },
        [&](const Special& special) {
            return special.accepts(value, current) ? QString() : special.refusal(current);
        },
    };
    const auto reason = std::visit(check, setting.kind);
    return reason.isEmpty() ? std::nullopt : std::optional(reason);
}

/// Of a value that was not refused.
Outcome written(const Setting& setting, const JSONValue& value, AppSettings& settings)
{
    const auto key = setting.key.toString();
    const auto write = Overloaded {
        [&](const Switch& flag) -> Outcome {
            settings.*flag.field = *value.boolean();
            return key + (*value.boolean() ? QStringLiteral(" → on") : QStringLiteral(" → off"));
        },
        [&](const Number& number) -> Outcome {
            const auto n = JSONValue::clampedInt(*value.number(), number.lowest, number.highest);
            settings.*number.field = n;
            return QStringLiteral("%1 → %2%3").arg(key).arg(n).arg(number.unit);
        },
        [&](const Special& special) -> Outcome {
            if (const auto summary = special.apply(value, settings))
                return *summary;
            return tl::unexpected(SettingsWriteError { mustBe(key, special.expectedType) });
        },
    };
    return std::visit(write, setting.kind);
}

} // namespace

QStringList SettingsWriteLogic::allowedKeys()
{
    QStringList keys;
    for (const auto& setting : settingsTable)
        keys.append(setting.key.toString());
    return keys;
}

QStringList SettingsWriteLogic::alwaysConfirmKeys()
{
    return {
        QStringLiteral("cloudSyncEnabled"),
        QStringLiteral("excludedBundleIDs"),
        QStringLiteral("appDataSources"),
    };
}

std::optional<QString> SettingsWriteLogic::validate(
    const QString& key, const JSONValue& value, const AppSettings& current)
{
    if (const auto* setting = settingOf(key))
        return refusal(*setting, value, current);
    return QStringLiteral("'%1' is not a setting the assistant may change").arg(key);
}

tl::expected<QString, SettingsWriteError> SettingsWriteLogic::apply(
    const QString& key, const JSONValue& value, AppSettings& settings)
{
    if (const auto reason = validate(key, value, settings))
        return tl::unexpected(SettingsWriteError { *reason });
    return written(*settingOf(key), value, settings);
}

} // namespace pobblewig
