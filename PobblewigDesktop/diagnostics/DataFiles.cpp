#include "PobblewigDesktop/diagnostics/DataFiles.h"

#include <QDateTime>
#include <QDirIterator>

namespace pobblewig {

namespace {

TimePoint changedAt(const QFileInfo& file)
{
    return TimePoint(std::chrono::milliseconds(file.lastModified().toMSecsSinceEpoch()));
}

DataFile folder(const QFileInfo& info)
{
    DataFile folder { .name = info.fileName() + u'/', .changedAt = changedAt(info), .count = 0 };
    QDirIterator files(info.filePath(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        folder.bytes += files.fileInfo().size();
        ++folder.count;
    }
    return folder;
}

} // namespace

std::vector<DataFile> DataFiles::in(const QDir& directory)
{
    std::vector<DataFile> files;
    const auto all = directory.entryInfoList(
        QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const auto& info : all) {
        if (info.isDir())
            files.push_back(folder(info));
        else
            files.push_back({ .name = info.fileName(),
                .bytes = info.size(),
                .changedAt = changedAt(info),
                .isSetAside = info.fileName().contains(QStringLiteral(".corrupt-")) });
    }
    return files;
}

} // namespace pobblewig
