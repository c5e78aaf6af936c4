#pragma once

#include "foundation/JSONCodec.h"
#include "settings/AppDataSource.h"
#include "settings/AssistantRole.h"
#include "settings/CoachMode.h"
#include "settings/CompanionPersona.h"
#include "settings/ConversationKeeping.h"

namespace pobblewig {

/// All preferences of the user, and the little state that survives a restart of the program.
struct AppSettings {
    static QString defaultCanvasBaseURL();

    /// Password managers, which are never observed or captured.
    static std::vector<QString> defaultExcludedBundleIDs();

    int version = 1;
    CoachMode mode = CoachMode::openEnded;
    /// When a temporary mode ends.
    std::optional<TimePoint> modeRevertAt;
    std::optional<TimePoint> pausedUntil;
    bool pausedIndefinitely = false;
    std::vector<QString> excludedBundleIDs = defaultExcludedBundleIDs();
    int maxActivitySessions = 500;
    int activityRetentionDays = 14;
    bool screenCaptureRequestedBefore = false;
    bool hasCompletedOnboarding = false;
    std::set<AssistantRole> roles;
    CompanionPersona companionPersona = CompanionPersona::classic;
    QString mascot = QStringLiteral("mouse");
    QString mascotColorScheme = QStringLiteral("original");
    double mascotSizeScale = 1.0;
    bool memeModeEnabled = true;
    QString canvasBaseURL = defaultCanvasBaseURL();
    bool canvasSyncEnabled = false;
    int canvasSyncIntervalMinutes = 60;
    bool canvasDeadlineRemindersEnabled = true;
    int canvasDeadlineReminderHours = 24;
    bool classroomSyncEnabled = false;
    int classroomSyncIntervalMinutes = 60;
    bool classroomDeadlineRemindersEnabled = true;
    int classroomDeadlineReminderHours = 24;
    bool cloudSyncEnabled = false;
    int cloudSyncIntervalMinutes = 15;
    std::vector<AppDataSource> appDataSources;
    bool calendarSyncEnabled = false;
    int calendarSyncIntervalMinutes = 60;
    bool remindersSyncEnabled = false;
    bool dailyBriefingEnabled = true;
    std::optional<QString> lastDailyBriefingDayKey;
    /// Whether the user is asked first, by class of action.
    std::map<QString, bool> actionConfirmations;
    /// Since when the user is not asked, by class of action, as far as that is known.
    std::optional<std::map<QString, TimePoint>> allowedSince;
    /// The name of a `ThemePreference`.
    QString themePreference = QStringLiteral("system");
    QString accentChoice = QStringLiteral("coral");
    /// The name of a locale, such as "de_DE", or "system".
    QString dateLanguage = QStringLiteral("system");
    bool soundsEnabled = true;
    /// How long nothing must have happened before the buddy falls asleep.
    int sleepAfterMinutes = 5;
    bool memoryEnabled = true;
    ConversationKeeping keepConversations = ConversationKeeping::year;

    /// Appends the password managers that the list of excluded applications lacks.
    void restoreDefaultExclusions();

    bool operator==(const AppSettings&) const = default;

    static constexpr auto jsonFields();
};

constexpr auto AppSettings::jsonFields()
{
    using namespace json;
    using S = AppSettings;
    return std::tuple {
        defaulted("version", &S::version),
        defaulted("mode", &S::mode),
        optional("modeRevertAt", &S::modeRevertAt),
        optional("pausedUntil", &S::pausedUntil),
        defaulted("pausedIndefinitely", &S::pausedIndefinitely),
        defaulted("excludedBundleIDs", &S::excludedBundleIDs),
        defaulted("maxActivitySessions", &S::maxActivitySessions),
        defaulted("activityRetentionDays", &S::activityRetentionDays),
        defaulted("screenCaptureRequestedBefore", &S::screenCaptureRequestedBefore),
        defaulted("hasCompletedOnboarding", &S::hasCompletedOnboarding),
        defaulted("roles", &S::roles),
        defaulted("companionPersona", &S::companionPersona),
        defaulted("mascot", &S::mascot),
        defaulted("mascotColorScheme", &S::mascotColorScheme),
        defaulted("mascotSizeScale", &S::mascotSizeScale),
        defaulted("memeModeEnabled", &S::memeModeEnabled),
        defaulted("canvasBaseURL", &S::canvasBaseURL),
        defaulted("canvasSyncEnabled", &S::canvasSyncEnabled),
        defaulted("canvasSyncIntervalMinutes", &S::canvasSyncIntervalMinutes),
        defaulted("canvasDeadlineRemindersEnabled", &S::canvasDeadlineRemindersEnabled),
        defaulted("canvasDeadlineReminderHours", &S::canvasDeadlineReminderHours),
        defaulted("classroomSyncEnabled", &S::classroomSyncEnabled),
        defaulted("classroomSyncIntervalMinutes", &S::classroomSyncIntervalMinutes),
        defaulted("classroomDeadlineRemindersEnabled", &S::classroomDeadlineRemindersEnabled),
        defaulted("classroomDeadlineReminderHours", &S::classroomDeadlineReminderHours),
        defaulted("cloudSyncEnabled", &S::cloudSyncEnabled),
        defaulted("cloudSyncIntervalMinutes", &S::cloudSyncIntervalMinutes),
        defaulted("appDataSources", &S::appDataSources),
        defaulted("calendarSyncEnabled", &S::calendarSyncEnabled),
        defaulted("calendarSyncIntervalMinutes", &S::calendarSyncIntervalMinutes),
        defaulted("remindersSyncEnabled", &S::remindersSyncEnabled),
        defaulted("dailyBriefingEnabled", &S::dailyBriefingEnabled),
        optional("lastDailyBriefingDayKey", &S::lastDailyBriefingDayKey),
        defaulted("actionConfirmations", &S::actionConfirmations),
        optional("allowedSince", &S::allowedSince),
        defaulted("themePreference", &S::themePreference),
        defaulted("accentChoice", &S::accentChoice),
        defaulted("dateLanguage", &S::dateLanguage),
        defaulted("soundsEnabled", &S::soundsEnabled),
        defaulted("sleepAfterMinutes", &S::sleepAfterMinutes),
        defaulted("memoryEnabled", &S::memoryEnabled),
        defaulted("keepConversations", &S::keepConversations),
    };
}

/// A file of an early version holds one role, under "persona".
template <>
struct json::Codec<AppSettings> : json::RecordCodec<AppSettings> {
    static Decoded<AppSettings> decode(const QJsonValue& value, const Path& path);
};

} // namespace pobblewig
