#include "settings/SettingTexts.h"

#include "foundation/Overloaded.h"
#include "foundation/Text.h"
#include "mascots/MascotColorScheme.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using S = AppSettings;

using Switch = bool S::*;

struct Number {
    int S::*field;
    QStringView unit;
};

using Word = QString (*)(const S& settings);
using List = QStringList (*)(const S& settings);

struct Setting {
    QStringView key;
    QStringView label;
    std::variant<Switch, Number, Word, List> value;
};

QString mode(const S& settings)
{
    return displayName(settings.mode);
}

QString persona(const S& settings)
{
    return displayName(settings.companionPersona);
}

QString form(const S& settings)
{
    return displayName(userFacingMascot(settings.mascot));
}

QString colorScheme(const S& settings)
{
    const auto mascot = userFacingMascot(settings.mascot);
    return MascotColorScheme::forID(settings.mascotColorScheme, mascot).displayName;
}

QString canvasURL(const S& settings)
{
    return settings.canvasBaseURL;
}

QStringList roles(const S& settings)
{
    QStringList names;
    for (const auto role : settings.roles)
        names.append(displayName(role));
    return names;
}

QStringList excludedApps(const S& settings)
{
    return { settings.excludedBundleIDs.begin(), settings.excludedBundleIDs.end() };
}

QStringList dataSources(const S& settings)
{
    QStringList sources;
    for (const auto& source : settings.appDataSources) {
        const auto form =
            source.enabled ? QStringLiteral("%1 (%2)") : QStringLiteral("%1 (%2, off)");
        sources.append(form.arg(source.name, source.rootPath));
    }
    return sources;
}

constexpr auto settingsTable = std::to_array<Setting>({
    { u"mode", u"Mode", Word(mode) },
    { u"roles", u"Roles", List(roles) },
    { u"companionPersona", u"Persona", Word(persona) },
    { u"mascot", u"Form", Word(form) },
    { u"mascotColorScheme", u"Color scheme", Word(colorScheme) },
    { u"pausedIndefinitely", u"Observation pause", &S::pausedIndefinitely },
    { u"excludedBundleIDs", u"Excluded apps", List(excludedApps) },
    { u"maxActivitySessions", u"Activity history limit",
        Number { &S::maxActivitySessions, u"session" } },
    { u"activityRetentionDays", u"Activity history kept for",
        Number { &S::activityRetentionDays, u"day" } },
    { u"canvasBaseURL", u"Canvas address", Word(canvasURL) },
    { u"canvasSyncEnabled", u"Canvas sync", &S::canvasSyncEnabled },
    { u"canvasSyncIntervalMinutes", u"Canvas sync interval",
        Number { &S::canvasSyncIntervalMinutes, u"minute" } },
    { u"canvasDeadlineRemindersEnabled", u"Canvas deadline reminders",
        &S::canvasDeadlineRemindersEnabled },
    { u"canvasDeadlineReminderHours", u"Canvas reminder before a deadline",
        Number { &S::canvasDeadlineReminderHours, u"hour" } },
    { u"classroomSyncEnabled", u"Google Classroom sync", &S::classroomSyncEnabled },
    { u"classroomSyncIntervalMinutes", u"Google Classroom sync interval",
        Number { &S::classroomSyncIntervalMinutes, u"minute" } },
    { u"classroomDeadlineRemindersEnabled", u"Google Classroom deadline reminders",
        &S::classroomDeadlineRemindersEnabled },
    { u"classroomDeadlineReminderHours", u"Google Classroom reminder before a deadline",
        Number { &S::classroomDeadlineReminderHours, u"hour" } },
    { u"calendarSyncEnabled", u"Calendar sync", &S::calendarSyncEnabled },
    { u"calendarSyncIntervalMinutes", u"Calendar sync interval",
        Number { &S::calendarSyncIntervalMinutes, u"minute" } },
    { u"remindersSyncEnabled", u"Reminders sync", &S::remindersSyncEnabled },
    { u"cloudSyncEnabled", u"Cloud sync", &S::cloudSyncEnabled },
    { u"cloudSyncIntervalMinutes", u"Cloud sync interval",
        Number { &S::cloudSyncIntervalMinutes, u"minute" } },
    { u"appDataSources", u"Folders the assistant may read", List(dataSources) },
});

const Setting* settingOf(const QString& key)
{
    const auto* found = std::ranges::find(settingsTable, key, &Setting::key);
    return found == settingsTable.end() ? nullptr : found;
}

QString listed(const QStringList& entries)
{
    return entries.isEmpty() ? QStringLiteral("none") : entries.join(QStringLiteral(", "));
}

} // namespace

QString SettingTexts::label(const QString& key)
{
    const auto* setting = settingOf(key);
    return setting ? setting->label.toString() : key;
}

QString SettingTexts::value(const QString& key, const AppSettings& settings)
{
    const Overloaded words {
        [&](Switch field) {
            return settings.*field ? QStringLiteral("on") : QStringLiteral("off");
        },
        [&](const Number& number) { return Text::counted(settings.*number.field, number.unit); },
        [&](Word word) { return word(settings); },
        [&](List list) { return listed(list(settings)); },
    };
    const auto* setting = settingOf(key);
    return setting ? std::visit(words, setting->value) : QString();
}

QStringList SettingTexts::entries(const QString& key, const AppSettings& settings)
{
    const auto* setting = settingOf(key);
    const auto* list = setting ? std::get_if<List>(&setting->value) : nullptr;
    return list ? (*list)(settings) : QStringList();
}

} // namespace pobblewig
