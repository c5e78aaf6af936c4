#include "PobblewigLinux/desktop/BeneathAppDataReader.h"

#include <QFile>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace pobblewig {

namespace {

using Kind = AppDataFault::Kind;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

std::error_code lastError()
{
    return { errno, std::generic_category() };
}

auto failure(const std::error_code& error)
{
    const auto isNotThere =
        error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    const auto kind = error == std::errc::cross_device_link ? Kind::escapesRoot
        : isNotThere                                        ? Kind::notThere
                                                            : Kind::unreadable;
    return tl::unexpected(AppDataFault { kind, QString::fromStdString(error.message()) });
}

QByteArray selfPath(const FileDescriptor& file)
{
    return "/proc/self/fd/" + QByteArray::number(file.get());
}

/// The current path of the file, or empty if the system cannot tell.
QByteArray realPath(const FileDescriptor& file)
{
    QByteArray path(PATH_MAX, Qt::Uninitialized);
    const auto size = ::readlink(selfPath(file).constData(), path.data(), size_t(path.size()));
    path.truncate(std::max<qsizetype>(size, 0));
    return path;
}

std::optional<QByteArray> relativeTo(const QByteArray& root, const QByteArray& path)
{
    if (path == root)
        return QByteArray(".");
    const auto beginning = root.endsWith('/') ? root : root + '/';
    return path.startsWith(beginning) ? std::optional(path.sliced(beginning.size())) : std::nullopt;
}

/// The path without links to something below the root, even if an absolute link leads there.
std::optional<QByteArray> directWay(const QByteArray& root, const QByteArray& path)
{
    const std::unique_ptr<char, FreeText> real(
        ::realpath((root + '/' + path).constData(), nullptr));
    return real ? relativeTo(root, real.get()) : std::nullopt;
}

std::optional<TimePoint> timePoint(const timespec& time)
{
    constexpr time_t year10000 = 253'402'300'800;
    if (time.tv_sec <= -year10000 || time.tv_sec >= year10000)
        return std::nullopt;
    const auto fraction = std::chrono::nanoseconds(time.tv_nsec);
    return TimePoint(std::chrono::seconds(time.tv_sec)
        + std::chrono::floor<std::chrono::milliseconds>(fraction));
}

AppDataEntry entry(int folder, const char* name)
{
    AppDataEntry result { .name = QFile::decodeName(name) };
    struct stat status = {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) == 0) {
        result.isFolder = S_ISDIR(status.st_mode);
        result.modified = timePoint(status.st_mtim);
    }
    return result;
}

/// The name of the next entry other than the folder itself and its parent, or null after the last.
const char* nextName(DIR* folder)
{
    const auto* found = ::readdir(folder);
    while (found && (qstrcmp(found->d_name, ".") == 0 || qstrcmp(found->d_name, "..") == 0))
        found = ::readdir(folder);
    return found ? found->d_name : nullptr;
}

class BeneathAppDataFile : public AppDataFile {
public:
    BeneathAppDataFile(FileDescriptor file, QString path, qint64 size)
        : m_file(std::move(file))
        , m_realPath(std::move(path))
        , m_size(size)
    {
    }

    const QString& realPath() const override { return m_realPath; }
    qint64 size() const override { return m_size; }

    tl::expected<QByteArray, AppDataFault> read(qint64 limit) const override
    {
        // Opens the very same file, whatever its own name has become.
        const FileDescriptor file(
            ::open(selfPath(m_file).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        if (!file.isOpen())
            return failure(lastError());
        QByteArray bytes(limit, Qt::Uninitialized);
        qsizetype filled = 0;
        while (filled < limit) {
            const auto count = ::read(file.get(), bytes.data() + filled, size_t(limit - filled));
            if (count < 0 && errno != EINTR)
                return failure(lastError());
            if (count == 0)
                break;
            filled += std::max<qsizetype>(count, 0);
        }
        bytes.truncate(filled);
        return bytes;
    }

private:
    FileDescriptor m_file;
    QString m_realPath;
    qint64 m_size;
};

} // namespace

BeneathAppDataReader::BeneathAppDataReader(PathBeneath::Finder find)
    : m_find(find)
{
}

auto BeneathAppDataReader::open(const AppDataLocation& location) const
    -> tl::expected<std::unique_ptr<AppDataFile>, AppDataFault>
{
    auto place = reach(location);
    if (!place)
        return tl::unexpected(place.error());
    struct stat status = {};
    if (::fstat(place->descriptor.get(), &status) != 0)
        return failure(lastError());
    if (S_ISDIR(status.st_mode))
        return failure(std::make_error_code(std::errc::is_a_directory));
    if (!S_ISREG(status.st_mode))
        return tl::unexpected(
            AppDataFault { Kind::unreadable, QStringLiteral("not a regular file") });
    // The path of a removed file ends in a note, which would hide its name from the rules.
    if (status.st_nlink == 0 && place->path.endsWith(" (deleted)"))
        return failure(std::make_error_code(std::errc::no_such_file_or_directory));
    return std::make_unique<BeneathAppDataFile>(
        std::move(place->descriptor), QFile::decodeName(place->path), status.st_size);
}

auto BeneathAppDataReader::list(const AppDataLocation& location, int limit) const
    -> tl::expected<AppDataListing, AppDataFault>
{
    const auto place = reach(location);
    if (!place)
        return tl::unexpected(place.error());
    FileDescriptor readable(
        ::openat(place->descriptor.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::unique_ptr<DIR, CloseFolder> folder(
        readable.isOpen() ? ::fdopendir(readable.get()) : nullptr);
    if (!folder)
        return failure(lastError());
    readable.release();
    AppDataListing listing(limit, QFile::decodeName(place->path));
    while (const auto* name = nextName(folder.get()))
        listing.add(entry(::dirfd(folder.get()), name));
    return listing;
}

auto BeneathAppDataReader::reach(const AppDataLocation& location) const
    -> tl::expected<Place, AppDataFault>
{
    const FileDescriptor root(
        ::open(QFile::encodeName(location.root).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!root.isOpen())
        return failure(lastError());
    const auto realRoot = realPath(root);
    if (realRoot.isEmpty())
        return failure(lastError());
    const auto path = location.path.isEmpty() ? "." : QFile::encodeName(location.path);
    auto found = m_find(root, path);
    if (!found && found.error() == std::errc::cross_device_link) {
        if (const auto way = directWay(realRoot, path))
            found = m_find(root, *way);
    }
    if (!found)
        return failure(found.error());
    const auto realBelow = relativeTo(realRoot, realPath(*found));
    if (!realBelow)
        return failure(std::make_error_code(std::errc::cross_device_link));
    return Place { std::move(*found), *realBelow };
}

} // namespace pobblewig
