#pragma once

#include "settings/AppSettings.h"

#include <array>

/// Which classes of the assistant's actions ask the user for confirmation.
namespace pobblewig::ActionAutonomy {

inline constexpr QStringView calendarWrite = u"calendar_write";
inline constexpr QStringView reminderWrite = u"reminder_write";
inline constexpr QStringView settingsChange = u"settings_change";
inline constexpr QStringView memoryForget = u"memory_forget";

/// These always ask, even if the user has switched the confirmation off.
inline constexpr std::array<QStringView, 4> alwaysConfirm {
    u"memory_delete_all",
    u"activity_delete_history",
    u"data_source_remove",
    memoryForget,
};

/// A class asks unless the user has switched its confirmation off.
bool requiresConfirmation(QStringView actionClass, const AppSettings& settings);
bool requiresConfirmation(QStringView actionClass, const std::map<QString, bool>& confirmations);

/// Lets a class of actions ask, or allows it without a question from now on.
void setAsks(AppSettings& settings, const QString& actionClass, bool asks, TimePoint now);

/// Since when it does not ask, if that is known.
std::optional<TimePoint> allowedSince(const AppSettings& settings, const QString& actionClass);

} // namespace pobblewig::ActionAutonomy
