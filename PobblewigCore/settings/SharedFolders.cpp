#include "settings/SharedFolders.h"

#include "foundation/Text.h"
#include "settings/SettingForms.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SharedFolders)
};

/// Below the home folder as people write it.
QString written(const QString& path)
{
    const auto clean = QDir::cleanPath(path);
    const auto home = QDir::homePath();
    if (clean == home)
        return QStringLiteral("~");
    return clean.startsWith(home + u'/') ? u'~' + clean.sliced(home.size()) : clean;
}

QString nameOf(const QString& path)
{
    auto name = path.section(u'/', -1).left(SettingForms::longestFolderName);
    name.remove(u'~');
    return name.isEmpty() ? Texts::tr("Everything") : name;
}

} // namespace

auto SharedFolders::with(const Folders& folders, const QString& path)
    -> tl::expected<Folders, QString>
{
    const auto added = written(path);
    if (std::ranges::find(folders, added, &AppDataSource::rootPath) != folders.end())
        return tl::unexpected(Texts::tr("%1 is shared already.").arg(added));
    if (!SettingForms::isFolderPath(added))
        return tl::unexpected(
            Texts::tr("The folder's path has characters that cannot be shown. Rename it first."));
    auto shared = folders;
    shared.push_back({ QUuid::createUuid(),
        Text::plainLine(nameOf(added), SettingForms::longestFolderName), added });
    return shared;
}

} // namespace pobblewig
