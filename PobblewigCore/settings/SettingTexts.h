#pragma once

#include "settings/AppSettings.h"

#include <QStringList>

/// The settings that the assistant may change, in the user's words.
namespace pobblewig::SettingTexts {

/// "Mode" for "mode". An unknown key is its own label.
QString label(const QString& key);

/// What the setting is at present: "Focus", "on", "30 minutes". Empty for an unknown key.
QString value(const QString& key, const AppSettings& settings);

/// The entries of a setting that is a list. No other setting has any.
QStringList entries(const QString& key, const AppSettings& settings);

} // namespace pobblewig::SettingTexts
