#include "support/FakeKeychain.h"

namespace pobblewig {

FakeKeychain::FakeKeychain(std::map<QString, QString> given)
    : entries(std::move(given))
{
}

Task<std::optional<QString>> FakeKeychain::read(QString account)
{
    accountsRead.append(account);
    const auto found = entries.find(account);
    if (isDisabled || found == entries.end())
        co_return std::nullopt;
    // A plain member would be moved out of, not copied.
    co_return std::optional(found->second);
}

Task<> FakeKeychain::write(QString account, QString value)
{
    if (!isDisabled)
        entries.insert_or_assign(account, value);
    co_return;
}

Task<> FakeKeychain::remove(QString account)
{
    if (!isDisabled)
        entries.erase(account);
    co_return;
}

Task<> FakeKeychain::migrateFromLegacyService()
{
    co_return;
}

} // namespace pobblewig
