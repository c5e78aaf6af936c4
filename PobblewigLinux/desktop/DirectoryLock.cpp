#include "PobblewigLinux/desktop/DirectoryLock.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace pobblewig {

namespace {

FileDescriptor opened(const QString& path, int flags)
{
    return FileDescriptor(
        ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NONBLOCK, 0600));
}

FileDescriptor openedDirectory(const QDir& directory)
{
    return opened(directory.absolutePath(), O_RDONLY | O_DIRECTORY);
}

/// Whether another process has locked the file. A file that cannot be locked is not held.
bool isRefused(const FileDescriptor& file, int operation)
{
    return ::flock(file.get(), operation | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

} // namespace

DirectoryLock::DirectoryLock(const QDir& directory)
    : m_directory(directory)
    , m_directoryLock(-1)
    , m_fileLock(-1)
{
}

bool DirectoryLock::isHeldByAnother() const
{
    return !isTaken() && isRefused(openedDirectory(m_directory), LOCK_SH);
}

DirectoryLock::Outcome DirectoryLock::take(std::chrono::milliseconds patience)
{
    constexpr auto pause = std::chrono::milliseconds(20);
    const QDeadlineTimer deadline(patience);
    auto outcome = tryOnce();
    while (outcome == Outcome::heldByAnother && !deadline.hasExpired()) {
        QThread::msleep(pause.count());
        outcome = tryOnce();
    }
    return outcome;
}

std::optional<qint64> DirectoryLock::holder() const
{
    struct stat status = {};
    QFile locks(QStringLiteral("/proc/locks"));
    if (::stat(QFile::encodeName(m_directory.absolutePath()).constData(), &status) != 0
        || !locks.open(QIODevice::ReadOnly))
        return std::nullopt;
    // "1: FLOCK  ADVISORY  WRITE 4711 08:01:131075 0 EOF": the process, then the inode.
    const QRegularExpression line(
        QStringLiteral("FLOCK .* ([0-9]+) [0-9a-f]+:[0-9a-f]+:%1 ").arg(status.st_ino));
    const auto found = line.match(QString::fromLatin1(locks.readAll()));
    return found.hasMatch() ? std::optional(found.captured(1).toLongLong()) : std::nullopt;
}

DirectoryLock::Outcome DirectoryLock::tryOnce()
{
    auto directory = openedDirectory(m_directory);
    if (!directory.isOpen())
        return Outcome::impossible;
    if (isRefused(directory, LOCK_EX))
        return Outcome::heldByAnother;
    // Network file systems tell other machines about the locks of files only.
    auto file = opened(m_directory.absoluteFilePath(QStringLiteral("process.lock")),
        O_RDWR | O_CREAT | O_NOFOLLOW);
    if (isRefused(file, LOCK_EX))
        return Outcome::heldByAnother;
    m_directoryLock = std::move(directory);
    m_fileLock = std::move(file);
    return Outcome::taken;
}

} // namespace pobblewig
