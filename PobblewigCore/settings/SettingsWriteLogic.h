#pragma once

#include "settings/SettingCatalog.h"

#include <tl/expected.hpp>

namespace pobblewig {

struct SettingsWriteError {
    /// For the model that asked for the change.
    QString reason;

    bool operator==(const SettingsWriteError&) const = default;
};

/// What the settings accept, which of them the assistant may change, and the words of the result.
namespace SettingsWriteLogic {

using Rows = SettingCatalog::Rows;

/// Every key that the assistant may name.
QStringList allowedKeys(Rows rows = SettingCatalog::all());

/// A change of one of these asks the user, whatever the user has switched off.
QStringList alwaysConfirmKeys(Rows rows = SettingCatalog::all());

/// Null for a key that the assistant may not name.
const Setting* allowed(const QString& key, Rows rows = SettingCatalog::all());

/// Why the change would be refused; nothing if it would be accepted.
std::optional<QString> validate(const QString& key, const JSONValue& value,
    const AppSettings& current, Rows rows = SettingCatalog::all());

/// Checks, changes the settings and says in one line what they now are. Numbers out of range are
/// moved to the nearest bound, never refused.
tl::expected<QString, SettingsWriteError> apply(const QString& key, const JSONValue& value,
    AppSettings& settings, Rows rows = SettingCatalog::all());

/// Likewise for the user, who may change every setting.
tl::expected<QString, SettingsWriteError> write(
    const Setting& setting, const JSONValue& value, AppSettings& settings);

} // namespace SettingsWriteLogic

} // namespace pobblewig
