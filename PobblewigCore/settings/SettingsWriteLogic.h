#pragma once

#include "foundation/JSONValue.h"
#include "settings/AppSettings.h"

#include <QStringList>

#include <tl/expected.hpp>

namespace pobblewig {

struct SettingsWriteError {
    /// For the model that asked for the change.
    QString reason;

    bool operator==(const SettingsWriteError&) const = default;
};

/// The settings that the assistant may change, what each of them accepts, and the words of the
/// result. Everything else is the user's alone.
namespace SettingsWriteLogic {

/// Every key that the assistant may name.
QStringList allowedKeys();

/// A change of one of these asks the user, whatever the user has switched off.
QStringList alwaysConfirmKeys();

/// Why the change would be refused; nothing if it would be accepted.
std::optional<QString> validate(
    const QString& key, const JSONValue& value, const AppSettings& current);

/// Checks, changes the settings and says in one line what they now are. Numbers out of range are
/// moved to the nearest bound, never refused.
tl::expected<QString, SettingsWriteError> apply(
    const QString& key, const JSONValue& value, AppSettings& settings);

} // namespace SettingsWriteLogic

} // namespace pobblewig
