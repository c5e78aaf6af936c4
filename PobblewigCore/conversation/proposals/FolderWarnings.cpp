#include "conversation/proposals/FolderWarnings.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FolderWarnings)
};

/// Empty if there is nothing to warn of.
QString warning(const QString& rootPath)
{
    const auto home = QDir::homePath();
    auto path = rootPath;
    if (path == u"~" || path.startsWith(u"~/"))
        path.replace(0, 1, home);
    path = QDir::cleanPath(path);
    if (path == u"/")
        return Texts::tr("Careful: %1 is everything on this computer.").arg(rootPath);
    if (home == path || home.startsWith(path + u'/'))
        return Texts::tr("Careful: %1 is everything in your home folder.").arg(rootPath);
    return {};
}

} // namespace

QStringList FolderWarnings::warnings(const AppSettings& before, const AppSettings& after)
{
    QStringList lines;
    for (const auto& source : after.appDataSources) {
        const auto isKnown =
            std::ranges::find(before.appDataSources, source.rootPath, &AppDataSource::rootPath)
            != before.appDataSources.end();
        if (const auto text = warning(source.rootPath); !isKnown && !text.isEmpty())
            lines.append(text);
    }
    lines.removeDuplicates();
    return lines;
}

} // namespace pobblewig
