#pragma once

#include "foundation/Task.h"

#include <QString>

#include <optional>

namespace pobblewig {

/// Credentials by account name, in the desktop's keyring under the service "com.pobblewig.app".
///
/// No call reports an error: what cannot be read is nothing, a failed write is ignored, and `state`
/// tells why. No call waits longer than a minute, including for the user to answer an unlock
/// prompt.
class KeychainHelper {
public:
    enum class State { unknown, available, locked, absent };

    static constexpr auto canvasAPITokenAccount = u"canvas-api-token";
    static constexpr auto sessionTokenAccount = u"session-token";
    static constexpr auto classroomTokenAccount = u"google-classroom-access-token";
    static constexpr auto cloudCredentialAccount = u"cloud-credential";

    virtual ~KeychainHelper() = default;

    /// While true the keyring is not accessed: reads return nothing and changes have no effect.
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
