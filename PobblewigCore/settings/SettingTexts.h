#pragma once

#include "settings/SettingCatalog.h"

/// The settings in the user's words.
namespace pobblewig::SettingTexts {

/// "Mode".
QString label(const Setting& setting);

/// What the setting is at present: "Focus", "on", "30 minutes".
QString value(const Setting& setting, const AppSettings& settings);

/// The entries of a setting that is a list. No other setting has any.
QStringList entries(const Setting& setting, const AppSettings& settings);

} // namespace pobblewig::SettingTexts
