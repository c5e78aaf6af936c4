#pragma once

#include "foundation/FileOperations.h"
#include "foundation/Time.h"

#include <QDir>

#include <memory>
#include <optional>

namespace pobblewig {

/// Why the last save failed, shared by all files of a directory; nothing once one has succeeded.
struct StorageHealth {
    std::optional<QString> lastProblem;
};

/// Where the stores keep their files, and how files are written there.
struct DataDirectory {
    DataDirectory(QDir path)
        : path(std::move(path))
    {
    }

    /// Creates the directory if need be. What keeps files from being written there, if anything.
    std::optional<QString> prepare() const;

    QDir path;
    Clock clock = systemNow;
    std::shared_ptr<const FileOperations> operations = std::make_shared<FileOperations>();
    std::shared_ptr<StorageHealth> health = std::make_shared<StorageHealth>();
};

} // namespace pobblewig
