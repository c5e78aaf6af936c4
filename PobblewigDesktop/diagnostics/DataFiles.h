#pragma once

#include "foundation/Time.h"

#include <QDir>

#include <vector>

namespace pobblewig {

/// A file of the data directory, or a folder in it with all that it holds.
struct DataFile {
    QString name;
    qint64 bytes = 0;
    TimePoint changedAt;
    /// 1 for a file.
    int count = 1;
    /// A file that could not be understood and was kept under another name.
    bool isSetAside = false;

    bool operator==(const DataFile&) const = default;
};

namespace DataFiles {

/// By name. Reads sizes and times only.
std::vector<DataFile> in(const QDir& directory);

} // namespace DataFiles

} // namespace pobblewig
