#pragma once

#include "foundation/KeychainHelper.h"

#include <QStringList>

#include <map>

namespace pobblewig {

/// A keyring in memory. Remembers which accounts were asked for.
class FakeKeychain : public KeychainHelper {
public:
    explicit FakeKeychain(std::map<QString, QString> given = {})
        : entries(std::move(given))
    {
    }

    std::map<QString, QString> entries;
    QStringList accountsRead;

    Task<std::optional<QString>> read(QString account) override
    {
        accountsRead.append(account);
        const auto found = entries.find(account);
        if (isDisabled || found == entries.end())
            co_return std::nullopt;
        // A plain member would be moved out of, not copied.
        co_return std::optional(found->second);
    }

    Task<> write(QString account, QString value) override
    {
        if (!isDisabled)
            entries.insert_or_assign(account, value);
        co_return;
    }

    Task<> remove(QString account) override
    {
        if (!isDisabled)
            entries.erase(account);
        co_return;
    }

    Task<> migrateFromLegacyService() override { co_return; }
    State state() const override { return State::available; }
};

} // namespace pobblewig
