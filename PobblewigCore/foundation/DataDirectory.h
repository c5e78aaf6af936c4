#pragma once

#include "foundation/FileOperations.h"
#include "foundation/Time.h"

#include <QDir>

#include <map>
#include <memory>
#include <optional>

namespace pobblewig {

/// The files that could not be saved, each with the reason. A file is removed once it is saved
/// again.
struct StorageHealth {
    std::map<QString, QString> problems;
};

/// Where the stores keep their files, and how files are written there.
struct DataDirectory {
    DataDirectory(QDir path)
        : path(std::move(path))
    {
    }

    /// Creates the directory if need be, and keeps it and its files from other users. Returns why
    /// files cannot be written there, or nothing.
    std::optional<QString> prepare() const;

    QDir path;
    Clock clock = systemNow;
    std::shared_ptr<const FileOperations> operations = std::make_shared<FileOperations>();
    std::shared_ptr<StorageHealth> health = std::make_shared<StorageHealth>();
};

} // namespace pobblewig
