#pragma once

#include "foundation/KeychainHelper.h"

#include <QStringList>

#include <map>

namespace pobblewig {

/// A keyring in memory. Remembers which accounts were asked for.
class FakeKeychain : public KeychainHelper {
public:
    FakeKeychain() = default;
    explicit FakeKeychain(std::map<QString, QString> entries);

    std::map<QString, QString> entries;
    QStringList accountsRead;

    Task<std::optional<QString>> read(QString account) override;
    Task<> write(QString account, QString value) override;
    Task<> remove(QString account) override;
    Task<> migrateFromLegacyService() override;
    State state() const override { return State::available; }
};

} // namespace pobblewig
