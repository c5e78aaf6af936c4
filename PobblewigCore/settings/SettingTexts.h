#pragma once

#include "settings/AppSettings.h"

/// The settings that the assistant may change, in the user's words.
namespace pobblewig::SettingTexts {

/// "Mode" for "mode". An unknown key is its own label.
QString label(const QString& key);

/// What the setting is at present: "Focus", "on", "30 minutes". Empty for an unknown key.
QString value(const QString& key, const AppSettings& settings);

} // namespace pobblewig::SettingTexts
