#include "foundation/DataDirectory.h"

#include "foundation/PrivateFiles.h"

#include <QFileInfo>

namespace pobblewig {

std::optional<QString> DataDirectory::prepare() const
{
    const auto name = path.absolutePath();
    if (const auto error = operations->makePath(name))
        return QString::fromStdString(error.message());
    PrivateFiles::tighten(name);
    const QFileInfo info(name);
    if (!info.isDir())
        return QStringLiteral("it is not a directory");
    if (!info.isWritable() || !info.isExecutable())
        return QStringLiteral("no permission to write there");
    return std::nullopt;
}

} // namespace pobblewig
