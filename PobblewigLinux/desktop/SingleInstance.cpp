#include "PobblewigLinux/desktop/SingleInstance.h"

#include "foundation/FileOperations.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QSysInfo>

#include <csignal>

namespace pobblewig {

SingleInstance::SingleInstance(const QDir& dataDirectory, ApplicationBus& bus)
    : m_directory(dataDirectory)
    , m_bus(bus)
    , m_lock(dataDirectory.absoluteFilePath(QStringLiteral("process.lock")))
{
    // The lock of a running process never becomes stale, however old it is.
    m_lock.setStaleLockTime(0);
}

bool SingleInstance::isContested() const
{
    qint64 process = 0;
    QString host;
    QString application;
    if (!m_lock.getLockInfo(&process, &host, &application))
        return false;
    const auto isElsewhere = host != QSysInfo::machineHostName();
    return isElsewhere || ::kill(pid_t(process), 0) == 0 || errno != ESRCH;
}

SingleInstance::Claim SingleInstance::claim(const std::optional<QUrl>& link)
{
    using namespace std::chrono_literals;
    if (m_lock.isLocked())
        return Claim::first;
    FileOperations().makePath(m_directory.absolutePath());
    // Looks a second time, since the other process may just be starting or ending.
    for (const auto patience : { 0ms, 2000ms }) {
        if (mayProceed(patience))
            return Claim::first;
        if (m_bus.handOver(busName(), link))
            return Claim::handedOver;
    }
    return Claim::unanswered;
}

void SingleInstance::announce()
{
    m_bus.publish(busName());
}

QString SingleInstance::refusal() const
{
    qint64 process = 0;
    QString host;
    QString application;
    m_lock.getLockInfo(&process, &host, &application);
    return QStringLiteral("Pobblewig already runs with the data in %1 (process %2 on %3), but does "
                          "not answer. End that process, then start Pobblewig again.")
        .arg(m_directory.absolutePath(), QString::number(process), host);
}

bool SingleInstance::mayProceed(std::chrono::milliseconds patience)
{
    return m_lock.tryLock(int(patience.count())) || m_lock.error() != QLockFile::LockFailedError
        || !QFileInfo(m_directory.absolutePath()).isWritable();
}

QString SingleInstance::busName() const
{
    const QFileInfo directory(m_directory.absolutePath());
    const auto path =
        directory.exists() ? directory.canonicalFilePath() : directory.absoluteFilePath();
    const auto hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStringLiteral("com.pobblewig.app.data-%1").arg(QLatin1String(hash.left(16)));
}

} // namespace pobblewig
