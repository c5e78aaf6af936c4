#include "PobblewigLinux/desktop/PathBeneath.h"

#include <QList>

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <vector>

namespace pobblewig {

namespace {

/// The kernel's own limit.
constexpr int mostLinks = 40;

/// Each level holds a descriptor, of which a process has about a thousand.
constexpr qsizetype mostLevels = 256;

auto failure(int number)
{
    return tl::unexpected(std::error_code(number, std::generic_category()));
}

/// The path from a root downwards, with one descriptor for each level.
class Walk {
public:
    Walk(const FileDescriptor& root, const QByteArray& path)
        : m_root(root)
    {
        goOnWith(path);
    }

    PathBeneath::Found result()
    {
        while (!m_names.isEmpty()) {
            if (const auto error = step(m_names.takeLast()))
                return failure(error);
        }
        if (!m_levels.empty())
            return std::move(m_levels.back());
        FileDescriptor root(::openat(m_root.get(), ".", O_PATH | O_CLOEXEC));
        return root.isOpen() ? PathBeneath::Found(std::move(root)) : failure(errno);
    }

private:
    /// Each step returns an error number, or 0.
    int step(const QByteArray& name)
    {
        if (name.isEmpty() || name == ".")
            return 0;
        if (name == "..")
            return stepOut();
        FileDescriptor next(
            ::openat(innermost(), name.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
        struct stat status = {};
        if (!next.isOpen() || ::fstat(next.get(), &status) != 0)
            return errno;
        if (S_ISLNK(status.st_mode))
            return follow(next);
        if (!S_ISDIR(status.st_mode) && !m_names.isEmpty())
            return ENOTDIR;
        if (std::ssize(m_levels) == mostLevels)
            return ENAMETOOLONG;
        m_levels.push_back(std::move(next));
        return 0;
    }

    int stepOut()
    {
        if (m_levels.empty())
            return EXDEV;
        m_levels.pop_back();
        return 0;
    }

    int follow(const FileDescriptor& link)
    {
        if (++m_links > mostLinks)
            return ELOOP;
        QByteArray target(PATH_MAX, Qt::Uninitialized);
        const auto size = ::readlinkat(link.get(), "", target.data(), size_t(target.size()));
        if (size < 0)
            return errno;
        target.truncate(size);
        if (target.startsWith('/'))
            return EXDEV;
        goOnWith(target);
        return 0;
    }

    void goOnWith(const QByteArray& path)
    {
        auto names = path.split('/');
        std::ranges::reverse(names);
        m_names.append(names);
    }

    int innermost() const { return m_levels.empty() ? m_root.get() : m_levels.back().get(); }

    const FileDescriptor& m_root;

    /// The remaining names, the next one last.
    QList<QByteArray> m_names;
    std::vector<FileDescriptor> m_levels;
    int m_links = 0;
};

} // namespace

PathBeneath::Found PathBeneath::byKernel(const FileDescriptor& root, const QByteArray& path)
{
    open_how how = {};
    how.flags = O_PATH | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    const auto found = ::syscall(SYS_openat2, root.get(), path.constData(), &how, sizeof how);
    if (found >= 0)
        return FileDescriptor(int(found));
    // A kernel before 5.6, a sandbox that does not know the call, or a folder that was moved
    // meanwhile.
    if (errno == ENOSYS || errno == EPERM || errno == EAGAIN)
        return byWalking(root, path);
    return failure(errno);
}

PathBeneath::Found PathBeneath::byWalking(const FileDescriptor& root, const QByteArray& path)
{
    if (path.size() >= PATH_MAX)
        return failure(ENAMETOOLONG);
    return Walk(root, path).result();
}

} // namespace pobblewig
