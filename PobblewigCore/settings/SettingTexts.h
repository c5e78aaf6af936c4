#pragma once

#include "settings/SettingCatalog.h"

/// The settings as the user reads them.
namespace pobblewig::SettingTexts {

/// The label, such as "Mode".
QString label(const Setting& setting);

/// One line about what it does, or nothing.
QString explanation(const Setting& setting);

/// Why a value is refused, as a sentence.
QString refusal(const Setting& setting);

/// The current value, such as "Focus", "on" or "30 minutes".
QString value(const Setting& setting, const AppSettings& settings);

/// The entries of a setting that is a list; empty for all other settings.
QStringList entries(const Setting& setting, const AppSettings& settings);

} // namespace pobblewig::SettingTexts
