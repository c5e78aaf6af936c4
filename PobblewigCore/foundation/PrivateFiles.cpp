#include "foundation/PrivateFiles.h"

#include <QDirIterator>
#include <QFile>

#include <optional>
#include <sys/stat.h>

namespace pobblewig {

namespace {

constexpr mode_t rightsOfOthers = S_IRWXG | S_IRWXO;

std::optional<mode_t> mode(const QByteArray& path)
{
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0)
        return std::nullopt;
    return status.st_mode & 07777;
}

void tightenOne(const QString& path)
{
    const auto name = QFile::encodeName(path);
    const auto present = mode(name);
    if (present && (*present & rightsOfOthers) != 0)
        ::chmod(name.constData(), *present & ~rightsOfOthers);
}

} // namespace

bool PrivateFiles::isReadableByOthers(const QString& path)
{
    const auto permits = [](const QString& name, mode_t right) {
        return (mode(QFile::encodeName(name)).value_or(0) & right) != 0;
    };
    if (!permits(path, S_IRGRP | S_IROTH))
        return false;
    auto directory = QFileInfo(path).absoluteDir();
    while (permits(directory.path(), S_IXGRP | S_IXOTH)) {
        if (directory.isRoot())
            return true;
        directory.setPath(QFileInfo(directory.path()).path());
    }
    return false;
}

void PrivateFiles::tighten(const QString& directory)
{
    tightenOne(directory);
    QDirIterator entries(directory,
        QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks,
        QDirIterator::Subdirectories);
    while (entries.hasNext())
        tightenOne(entries.next());
}

} // namespace pobblewig
