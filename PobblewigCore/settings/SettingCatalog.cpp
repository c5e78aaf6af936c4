#include "settings/SettingCatalog.h"

#include "settings/SettingForms.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using Page = SettingsPage;
using Access = AssistantAccess;
using S = AppSettings;

constexpr SettingUnit sessions {
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 session"),
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 sessions"),
    u"",
};
constexpr SettingUnit days {
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 day"),
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 days"),
    u" days",
};
constexpr SettingUnit hours {
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 hour"),
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 hours"),
    u"h",
};
constexpr SettingUnit minutes {
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 minute"),
    QT_TRANSLATE_NOOP("SettingCatalog", "%1 minutes"),
    u" min",
};

constexpr ChoiceSetting persona()
{
    auto choice = SettingForms::caseOf<&S::companionPersona>();
    choice.options = SettingForms::personas;
    choice.meant = SettingForms::meantPersona;
    return choice;
}

constexpr std::array table {
    Setting {
        .key = u"mode",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Mode"),
        .page = Page::general,
        .assistant = Access::proposed,
        .kind = SettingForms::caseOf<&S::mode>(),
        .explanation = QT_TRANSLATE_NOOP("SettingCatalog",
            "How the companion behaves. The buddy's menu sets a mode for a while."),
        .sample = u"\"focus\"",
        .followUp = [](S& settings) { settings.modeRevertAt.reset(); },
    },
    Setting {
        .key = u"roles",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Roles"),
        .page = Page::companion,
        .assistant = Access::proposed,
        .kind = ChoicesSetting { SettingForms::roles, SettingForms::chosenRoles,
            SettingForms::setRoles },
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "What it may be to you. Each role adds a little to how it helps."),
        .sample = u"[\"tutor\"]",
        .summary = SettingForms::rolesInWords,
    },
    Setting {
        .key = u"companionPersona",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Persona"),
        .page = Page::companion,
        .assistant = Access::proposed,
        .kind = persona(),
        .explanation = QT_TRANSLATE_NOOP("SettingCatalog", "The voice that it speaks with."),
        .subject = u"persona",
    },
    Setting {
        .key = u"mascot",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Form"),
        .page = Page::companion,
        .assistant = Access::proposed,
        .kind = ChoiceSetting { SettingForms::mascots, SettingForms::mascot,
            SettingForms::store<&S::mascot>, SettingForms::meantMascot },
        .subject = u"form",
        .summary = SettingForms::mascotAndColors,
        .followUp = SettingForms::fitColors,
    },
    Setting {
        .key = u"mascotColorScheme",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Color scheme"),
        .page = Page::companion,
        .assistant = Access::proposed,
        .kind = ChoiceSetting { .options = SettingForms::colorSchemes,
            .chosen = SettingForms::colorScheme,
            .choose = SettingForms::store<&S::mascotColorScheme>,
            .remark = u"(for the current mascot)" },
        .subject = u"color scheme",
    },
    Setting {
        .key = u"mascotSizeScale",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Size"),
        .page = Page::companion,
        .assistant = Access::none,
        .kind = PercentSetting { &S::mascotSizeScale, 50, 300 },
    },
    Setting {
        .key = u"memeModeEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Reaction memes"),
        .page = Page::companion,
        .assistant = Access::none,
        .kind = SwitchSetting { &S::memeModeEnabled },
        .explanation = QT_TRANSLATE_NOOP("SettingCatalog",
            "After a reply that calls for it, the buddy turns into a picture for a moment."),
    },
    Setting {
        .key = u"pausedIndefinitely",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Observation pause"),
        .page = Page::activity,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::toSwitchOff,
        .kind = SwitchSetting { &S::pausedIndefinitely },
        .explanation = QT_TRANSLATE_NOOP("SettingCatalog",
            "While it is on, Pobblewig does not notice which application is in front."),
        .subject = u"observation pause",
        .followUp =
            [](S& settings) {
                if (!settings.pausedIndefinitely)
                    settings.pausedUntil.reset();
            },
    },
    Setting {
        .key = u"excludedBundleIDs",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Excluded apps"),
        .page = Page::activity,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = ListSetting { SettingForms::excludedApps, SettingForms::setExcludedApps,
            u"an array of bundle-ID strings", u"strings" },
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "These are never noticed, and never in a picture of the screen."),
        .sample = u"[\"com.apple.Safari\"]",
        .subject = u"excluded apps",
        .summary = SettingForms::excludedAppsInNumbers,
    },
    Setting {
        .key = u"maxActivitySessions",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Activity history limit"),
        .page = Page::activity,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = NumberSetting { &S::maxActivitySessions, 100, 2000, &sessions },
        .explanation =
            QT_TRANSLATE_NOOP("SettingCatalog", "The oldest are dropped beyond this number."),
    },
    Setting {
        .key = u"activityRetentionDays",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Activity history kept for"),
        .page = Page::activity,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = NumberSetting { &S::activityRetentionDays, 1, 90, &days },
        .explanation = QT_TRANSLATE_NOOP("SettingCatalog", "Older activity is deleted."),
    },
    Setting {
        .key = u"canvasBaseURL",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Canvas address"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = TextSetting { &S::canvasBaseURL, SettingForms::isSecureURL,
            u"an https:// URL with a plain host name and no user name" },
        .sample = u"an https:// address",
        .subject = u"Canvas URL",
    },
    Setting {
        .key = u"canvasSyncEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Canvas sync"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = SwitchSetting { &S::canvasSyncEnabled },
    },
    Setting {
        .key = u"canvasSyncIntervalMinutes",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Canvas sync interval"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .kind = NumberSetting { &S::canvasSyncIntervalMinutes, 15, 360, &minutes },
    },
    Setting {
        .key = u"canvasDeadlineRemindersEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Canvas deadline reminders"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .kind = SwitchSetting { &S::canvasDeadlineRemindersEnabled },
    },
    Setting {
        .key = u"canvasDeadlineReminderHours",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Canvas reminder before a deadline"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .kind = NumberSetting { &S::canvasDeadlineReminderHours, 6, 72, &hours },
    },
    Setting {
        .key = u"classroomSyncEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Google Classroom sync"),
        .page = Page::connections,
        .assistant = Access::accepted,
        .alwaysAsks = AlwaysAsks::all,
        .kind = SwitchSetting { &S::classroomSyncEnabled },
    },
    Setting {
        .key = u"classroomSyncIntervalMinutes",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Google Classroom sync interval"),
        .page = Page::connections,
        .assistant = Access::accepted,
        .kind = NumberSetting { &S::classroomSyncIntervalMinutes, 15, 360, &minutes },
    },
    Setting {
        .key = u"classroomDeadlineRemindersEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Google Classroom deadline reminders"),
        .page = Page::connections,
        .assistant = Access::accepted,
        .kind = SwitchSetting { &S::classroomDeadlineRemindersEnabled },
    },
    Setting {
        .key = u"classroomDeadlineReminderHours",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Google Classroom reminder before a deadline"),
        .page = Page::connections,
        .assistant = Access::accepted,
        .kind = NumberSetting { &S::classroomDeadlineReminderHours, 6, 72, &hours },
    },
    Setting {
        .key = u"calendarSyncEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Calendar sync"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = SwitchSetting { &S::calendarSyncEnabled },
    },
    Setting {
        .key = u"calendarSyncIntervalMinutes",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Calendar sync interval"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .kind = NumberSetting { &S::calendarSyncIntervalMinutes, 15, 360, &minutes },
    },
    Setting {
        .key = u"remindersSyncEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Reminders sync"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = SwitchSetting { &S::remindersSyncEnabled },
    },
    Setting {
        .key = u"cloudSyncEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Cloud sync"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = SwitchSetting { &S::cloudSyncEnabled },
    },
    Setting {
        .key = u"cloudSyncIntervalMinutes",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Cloud sync interval"),
        .page = Page::connections,
        .assistant = Access::proposed,
        .kind = NumberSetting { &S::cloudSyncIntervalMinutes, 15, 120, &minutes },
    },
    Setting {
        .key = u"memoryEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Memory"),
        .page = Page::memoryAndPrivacy,
        .assistant = Access::none,
        .kind = SwitchSetting { &S::memoryEnabled },
        .explanation = QT_TRANSLATE_NOOP("SettingCatalog",
            "While it is off, nothing that you say is noted, and no conversation is read for "
            "notes."),
    },
    Setting {
        .key = u"keepConversations",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Keep conversations"),
        .page = Page::memoryAndPrivacy,
        .assistant = Access::none,
        .kind = SettingForms::caseOf<&S::keepConversations>(),
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "How long the conversations that you have closed stay readable."),
    },
    Setting {
        .key = u"appDataSources",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Folders the assistant may read"),
        .page = Page::memoryAndPrivacy,
        .assistant = Access::proposed,
        .alwaysAsks = AlwaysAsks::all,
        .kind = ListSetting { SettingForms::dataSources, SettingForms::setDataSources,
            uR"(an array of {"name":"...","path":"..."} entries, each name at most 40 characters )"
            uR"(without / and ~, each path absolute or below ~)",
            uR"({"name","path"} objects)" },
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "The assistant may read what is in them, never change it."),
        .subject = u"app data sources",
        .summary = SettingForms::dataSourcesInNumbers,
    },
    Setting {
        .key = u"actionConfirmations",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Ask me before"),
        .page = Page::memoryAndPrivacy,
        .assistant = Access::none,
        .kind = ChoicesSetting { SettingForms::questions, SettingForms::askedQuestions,
            SettingForms::setQuestions },
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "What the assistant asks before it does something."),
    },
    Setting {
        .key = u"dailyBriefingEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Daily briefing"),
        .page = Page::general,
        .assistant = Access::none,
        .kind = SwitchSetting { &S::dailyBriefingEnabled },
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "A short look at the day, at the first time that you are there."),
    },
    Setting {
        .key = u"themePreference",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Theme"),
        .page = Page::general,
        .assistant = Access::none,
        .kind = ChoiceSetting { SettingForms::themes, SettingForms::theme,
            SettingForms::store<&S::themePreference> },
    },
    Setting {
        .key = u"accentChoice",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Accent color"),
        .page = Page::general,
        .assistant = Access::none,
        .kind = ChoiceSetting { SettingForms::accents, SettingForms::accent,
            SettingForms::store<&S::accentChoice> },
    },
    Setting {
        .key = u"dateLanguage",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Language of dates"),
        .page = Page::general,
        .assistant = Access::none,
        .kind = ChoiceSetting { SettingForms::dateLanguages, SettingForms::dateLanguage,
            SettingForms::store<&S::dateLanguage> },
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "Dates, times and numbers. What is open follows at the next start."),
    },
    Setting {
        .key = u"soundsEnabled",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Sounds"),
        .page = Page::companion,
        .assistant = Access::none,
        .kind = SwitchSetting { &S::soundsEnabled },
        .explanation = QT_TRANSLATE_NOOP("SettingCatalog", "A short sound with each reminder."),
    },
    Setting {
        .key = u"sleepAfterMinutes",
        .label = QT_TRANSLATE_NOOP("SettingCatalog", "Falls asleep after"),
        .page = Page::companion,
        .assistant = Access::none,
        .kind = NumberSetting { &S::sleepAfterMinutes, 1, 240, &minutes },
        .explanation = QT_TRANSLATE_NOOP(
            "SettingCatalog", "How long nothing must happen before the buddy dozes off."),
    },
};

constexpr std::array titles {
    QT_TRANSLATE_NOOP("SettingCatalog", "General"),
    QT_TRANSLATE_NOOP("SettingCatalog", "Companion"),
    QT_TRANSLATE_NOOP("SettingCatalog", "Activity"),
    QT_TRANSLATE_NOOP("SettingCatalog", "Connections"),
    QT_TRANSLATE_NOOP("SettingCatalog", "Memory & Privacy"),
};

} // namespace

auto SettingCatalog::all() -> Rows
{
    return table;
}

const Setting* SettingCatalog::find(const QString& key, Rows rows)
{
    const auto found = std::ranges::find(rows, key, &Setting::key);
    return found == rows.end() ? nullptr : &*found;
}

std::vector<const Setting*> SettingCatalog::onPage(SettingsPage page, Rows rows)
{
    std::vector<const Setting*> settings;
    for (const auto& setting : rows) {
        if (setting.page == page)
            settings.push_back(&setting);
    }
    return settings;
}

QString SettingCatalog::title(SettingsPage page)
{
    return QCoreApplication::translate("SettingCatalog", titles[size_t(page)]);
}

} // namespace pobblewig
