#include "foundation/QtKeychainHelper.h"

#include <QCoroSignal>
#include <QStringDecoder>

#include <qt6keychain/keychain.h>

#include <chrono>

namespace pobblewig {

namespace {

constexpr auto longestWait = std::chrono::seconds(60);

QString currentService()
{
    return QStringLiteral("com.pobblewig.app");
}

QString legacyService()
{
    return QStringLiteral("app.skritbuddy");
}

std::optional<QString> text(const QByteArray& bytes)
{
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString result = decode(bytes);
    if (result.isEmpty() || decode.hasError())
        return std::nullopt;
    return result;
}

KeychainHelper::State stateAfter(QKeychain::Error error, KeychainHelper::State before)
{
    switch (error) {
    case QKeychain::NoError:
    case QKeychain::EntryNotFound:
        // In a locked keyring nothing is found, so nothing is left to remove.
        return before == KeychainHelper::State::locked ? before : KeychainHelper::State::available;
    case QKeychain::AccessDenied:
    case QKeychain::AccessDeniedByUser:
        return KeychainHelper::State::locked;
    default:
        return KeychainHelper::State::absent;
    }
}

} // namespace

Task<std::optional<QString>> QtKeychainHelper::read(QString account)
{
    if (isDisabled)
        co_return std::nullopt;
    co_return co_await readFrom(currentService(), account);
}

Task<> QtKeychainHelper::write(QString account, QString value)
{
    if (!isDisabled)
        co_await writeCurrent(account, value);
}

Task<> QtKeychainHelper::remove(QString account)
{
    if (!isDisabled)
        co_await removeFrom(currentService(), account);
}

Task<> QtKeychainHelper::migrateFromLegacyService()
{
    if (isDisabled)
        co_return;
    const auto account = QString::fromUtf16(canvasAPITokenAccount);
    const auto legacy = co_await readFrom(legacyService(), account);
    if (!legacy)
        co_return;
    const auto current = co_await readFrom(currentService(), account);
    if (current)
        co_return;
    const auto isWritten = co_await writeCurrent(account, *legacy);
    if (isWritten)
        co_await removeFrom(legacyService(), account);
}

Task<std::optional<QString>> QtKeychainHelper::readFrom(QString service, QString account)
{
    auto* job = new QKeychain::ReadPasswordJob(service);
    const auto isRead = co_await succeeded(job, account);
    if (!isRead)
        co_return std::nullopt;
    m_state = State::available;
    co_return text(job->binaryData());
}

Task<bool> QtKeychainHelper::writeCurrent(QString account, QString value)
{
    auto* job = new QKeychain::WritePasswordJob(currentService());
    job->setTextData(value);
    const auto isWritten = co_await succeeded(job, account);
    m_state = isWritten ? State::available : State::locked;
    // A locked keyring still replies that it finds nothing; an absent one does not reply.
    if (!isWritten)
        co_await readFrom(currentService(), account);
    co_return isWritten;
}

Task<bool> QtKeychainHelper::removeFrom(QString service, QString account)
{
    co_return co_await succeeded(new QKeychain::DeletePasswordJob(service), account);
}

Task<bool> QtKeychainHelper::succeeded(QKeychain::Job* job, QString account)
{
    job->setKey(account);
    job->setAutoDelete(false);
    job->setInsecureFallback(false);
    job->start();
    const auto finished = co_await qCoro(job, &QKeychain::Job::finished, longestWait);
    if (!finished) {
        // The keyring still holds the job, which deletes itself when it is done.
        job->setAutoDelete(true);
        m_state = State::locked;
        co_return false;
    }
    job->deleteLater();
    m_state = stateAfter(job->error(), m_state);
    co_return job->error() == QKeychain::NoError;
}

} // namespace pobblewig
