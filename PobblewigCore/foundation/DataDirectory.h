#pragma once

#include "foundation/FileOperations.h"
#include "foundation/Time.h"

#include <QDir>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>

namespace pobblewig {

/// What the user has to know about the files.
struct StorageHealth {
    /// The files that could not be saved, each with the reason, until they are saved again.
    std::map<QString, QString> problems;

    /// The files that exist but could not be read, each with the reason, until they are. Nothing is
    /// written over them.
    std::map<QString, QString> unreadable;

    /// The names under which corrupt files have been kept since the start.
    QStringList setAside;
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
