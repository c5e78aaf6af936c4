#include "PobblewigLinux/modules/ModuleLoader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPluginLoader>

namespace pobblewig {

namespace {

std::optional<QString> fileOf(const QString& name, const QStringList& directories)
{
    for (const auto& directory : directories) {
        const auto path = QDir(directory).filePath(name + QStringLiteral(".so"));
        if (QFileInfo::exists(path))
            return path;
    }
    return std::nullopt;
}

} // namespace

ModuleLoader::ModuleLoader(QStringList directories)
    : m_directories(std::move(directories))
{
}

QStringList ModuleLoader::standardDirectories()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return { program.filePath(QStringLiteral("modules")),
        program.filePath(QStringLiteral(POBBLEWIG_MODULES)) };
}

tl::expected<QObject*, QString> ModuleLoader::root(
    const QString& name, QLatin1String interface) const
{
    const auto path = fileOf(name, m_directories);
    if (!path)
        return tl::unexpected(QObject::tr("Not available: Pobblewig's module “%1” is not "
                                          "installed.")
                                  .arg(name));
    QPluginLoader plugin(*path);
    if (plugin.metaData().value(QStringLiteral("IID")) != QString(interface))
        return tl::unexpected(
            QObject::tr("Not available: %1 is not the module “%2” of Pobblewig.").arg(*path, name));
    if (auto* const object = plugin.instance(); object && object->qt_metacast(interface.data()))
        return object;
    return tl::unexpected(QObject::tr("Not available: Pobblewig's module “%1” cannot be loaded "
                                      "(%2).")
                              .arg(name, plugin.errorString()));
}

} // namespace pobblewig
