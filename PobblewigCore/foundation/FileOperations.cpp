#include "foundation/FileOperations.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pobblewig {

namespace {

std::error_code lastError()
{
    return { errno, std::generic_category() };
}

std::error_code outcome(int result)
{
    return result == 0 ? std::error_code() : lastError();
}

template <typename Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

std::error_code writeAll(int file, QByteArrayView bytes, const FileOperations& operations)
{
    while (!bytes.isEmpty()) {
        const auto written = operations.write(file, bytes);
        if (!written)
            return written.error();
        if (*written <= 0)
            return std::make_error_code(std::errc::no_space_on_device);
        bytes = bytes.sliced(*written);
    }
    return {};
}

std::error_code fill(int file, QByteArrayView bytes, const FileOperations& operations)
{
    auto error = writeAll(file, bytes, operations);
    if (!error)
        error = operations.sync(file);
    const auto closeError = operations.close(file);
    return error ? error : closeError;
}

std::error_code replace(
    const QString& target, QByteArrayView bytes, const FileOperations& operations)
{
    const QFileInfo info(target);
    if (const auto error = operations.makePath(info.path()))
        return error;

    // A file has one writer, so one name is enough, and a leftover of a crash is overwritten.
    const auto partial = QStringLiteral("%1/.%2.partial").arg(info.path(), info.fileName());
    struct stat existing = {};
    const auto exists = stat(QFile::encodeName(target).constData(), &existing) == 0;
    const auto permissions =
        exists ? std::optional<unsigned>(existing.st_mode & 07777) : std::nullopt;

    const auto file = operations.create(partial, permissions);
    if (!file)
        return file.error();
    auto error = fill(*file, bytes, operations);
    if (!error)
        error = operations.rename(partial, target);
    if (error) {
        operations.remove(partial);
        return error;
    }
    return operations.syncDirectory(info.path());
}

std::error_code madePath(const QFileInfo& directory)
{
    if (directory.isDir())
        return {};
    if (const auto error = madePath(QFileInfo(directory.path())))
        return error;
    if (::mkdir(QFile::encodeName(directory.filePath()).constData(), 0700) == 0)
        return {};
    // Another process may have been faster.
    return errno == EEXIST && QFileInfo(directory.filePath()).isDir() ? std::error_code()
                                                                      : lastError();
}

QString withoutLinks(const QString& path)
{
    const auto target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

} // namespace

std::error_code FileOperations::makePath(const QString& directory) const
{
    return madePath(QFileInfo(directory));
}

tl::expected<int, std::error_code> FileOperations::create(
    const QString& path, std::optional<unsigned> permissions) const
{
    const auto name = QFile::encodeName(path);
    const auto flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW;
    const auto file = uninterrupted([&] { return ::open(name.constData(), flags, 0600); });
    if (file < 0)
        return tl::unexpected(lastError());
    if (permissions && ::fchmod(file, mode_t(*permissions)) != 0) {
        const auto error = lastError();
        ::close(file);
        return tl::unexpected(error);
    }
    return file;
}

tl::expected<qsizetype, std::error_code> FileOperations::write(int file, QByteArrayView bytes) const
{
    const auto written =
        uninterrupted([&] { return ::write(file, bytes.data(), size_t(bytes.size())); });
    if (written < 0)
        return tl::unexpected(lastError());
    return written;
}

std::error_code FileOperations::sync(int file) const
{
    return outcome(uninterrupted([&] { return ::fsync(file); }));
}

std::error_code FileOperations::close(int file) const
{
    return outcome(::close(file));
}

std::error_code FileOperations::rename(const QString& from, const QString& to) const
{
    return outcome(
        ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()));
}

std::error_code FileOperations::syncDirectory(const QString& directory) const
{
    const auto name = QFile::encodeName(directory);
    const auto file = ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return lastError();
    const auto error = outcome(uninterrupted([&] { return ::fsync(file); }));
    ::close(file);
    return error;
}

void FileOperations::remove(const QString& path) const
{
    ::unlink(QFile::encodeName(path).constData());
}

tl::expected<void, FileError> writeDurably(
    const QString& path, QByteArrayView bytes, const FileOperations& operations)
{
    if (const auto error = replace(withoutLinks(path), bytes, operations))
        return tl::unexpected(FileError { QString::fromStdString(error.message()) });
    return {};
}

} // namespace pobblewig
