#include "PobblewigLinux/desktop/SingleInstance.h"

#include "foundation/FileOperations.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace pobblewig {

SingleInstance::SingleInstance(const QDir& dataDirectory, ApplicationBus& bus)
    : m_directory(dataDirectory)
    , m_bus(bus)
    , m_lock(dataDirectory)
{
}

SingleInstance::Claim SingleInstance::claim(const std::optional<QUrl>& link)
{
    using namespace std::chrono_literals;
    using Outcome = DirectoryLock::Outcome;
    if (m_lock.isTaken())
        return Claim::first;
    FileOperations().makePath(m_directory.absolutePath());
    // Looks a second time, since the other process may just be starting or ending.
    for (const auto patience : { 0ms, 2000ms }) {
        const auto outcome = m_lock.take(patience);
        if (outcome == Outcome::taken)
            return Claim::first;
        if (m_bus.handOver(busName(), link))
            return Claim::handedOver;
        if (outcome == Outcome::impossible)
            return Claim::first;
    }
    return Claim::unanswered;
}

void SingleInstance::announce()
{
    m_bus.publish(busName());
}

QString SingleInstance::refusal() const
{
    const auto holder = m_lock.holder();
    return QStringLiteral("Pobblewig already runs with the data in %1 (%2), but does not answer. "
                          "End that process, then start Pobblewig again.")
        .arg(m_directory.absolutePath(),
            holder ? QStringLiteral("process %1").arg(*holder)
                   : QStringLiteral("perhaps on another computer"));
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
