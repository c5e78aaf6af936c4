#include "memes/MemeStamps.h"

#include <QDateTime>

namespace pobblewig {

namespace {

void stamp(MemeStamps& stamps, const QString& path)
{
    const auto changed = QFileInfo(path).lastModified();
    if (changed.isValid())
        stamps.emplace(path, TimePoint(std::chrono::milliseconds(changed.toMSecsSinceEpoch())));
}

} // namespace

MemeStamps memeStamps(const MemePlaces& places)
{
    auto stamps = memeStamps(places.user);
    stamp(stamps, places.user.filePath(QLatin1String(FolderSettings::fileName)));
    if (places.bundled)
        stamp(stamps, places.bundled->filePath(QLatin1String(MemeManifest::fileName)));
    const auto found = MemeFolders::discoverFolders(places.user);
    if (found.communityContainer)
        stamp(stamps, found.communityContainer->absolutePath());
    for (const auto& folder : found.folders)
        stamps.merge(memeStamps(folder.directory));
    return stamps;
}

MemeStamps memeStamps(const QDir& folder)
{
    MemeStamps stamps;
    stamp(stamps, folder.absolutePath());
    stamp(stamps, folder.filePath(QLatin1String(MemeManifest::fileName)));
    return stamps;
}

} // namespace pobblewig
