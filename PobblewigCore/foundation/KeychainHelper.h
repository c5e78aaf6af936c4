#pragma once

#include "foundation/Task.h"

#include <QString>

#include <optional>

namespace pobblewig {

/// Credentials by account name, in the desktop's keyring under the service "com.pobblewig.app".
///
/// Nothing here fails loudly: what cannot be read is nothing, what cannot be written is passed
/// over, and `state` tells why. No call waits longer than a minute, the user's answer to an unlock
/// prompt included.
class KeychainHelper {
public:
    enum class State { unknown, available, locked, absent };

    static constexpr auto canvasAPITokenAccount = u"canvas-api-token";
    static constexpr auto sessionTokenAccount = u"session-token";
    static constexpr auto classroomTokenAccount = u"google-classroom-access-token";
    static constexpr auto cloudCredentialAccount = u"cloud-credential";

    virtual ~KeychainHelper() = default;

    /// While true nothing touches the keyring: reading gives nothing, changes have no effect.
    bool isDisabled = false;

    virtual Task<std::optional<QString>> read(QString account) = 0;
    virtual Task<> write(QString account, QString value) = 0;
    virtual Task<> remove(QString account) = 0;

    /// Moves the Canvas token of early versions, kept under "app.skritbuddy", to this service.
    virtual Task<> migrateFromLegacyService() = 0;

    /// What the latest call found.
    virtual State state() const = 0;
};

} // namespace pobblewig
