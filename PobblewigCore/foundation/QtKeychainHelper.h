#pragma once

#include "foundation/KeychainHelper.h"

namespace QKeychain {
class Job;
}

namespace pobblewig {

/// The desktop's keyring. Never falls back to a plain-text file.
class QtKeychainHelper final : public KeychainHelper {
public:
    Task<std::optional<QString>> read(QString account) override;
    Task<> write(QString account, QString value) override;
    Task<> remove(QString account) override;
    Task<> migrateFromLegacyService() override;

    State state() const override { return m_state; }

private:
    Task<std::optional<QString>> readFrom(QString service, QString account);
    Task<bool> writeCurrent(QString account, QString value);
    Task<bool> removeFrom(QString service, QString account);
    Task<bool> succeeded(QKeychain::Job* job, QString account);

    State m_state = State::unknown;
};

} // namespace pobblewig
