#pragma once

#include "PobblewigLinux/desktop/FileDescriptor.h"

#include <QDir>

#include <chrono>
#include <optional>

namespace pobblewig {

/// A directory that one process claims for itself. The kernel keeps the claim: it needs no space on
/// the disk and ends with the process, however that ends.
class DirectoryLock {
public:
    enum class Outcome {
        taken,
        heldByAnother,
        /// The directory cannot be opened.
        impossible,
    };

    explicit DirectoryLock(const QDir& directory);

    bool isTaken() const { return m_directoryLock.isOpen(); }

    /// A quick look that claims nothing. Sees only processes of this machine.
    bool isHeldByAnother() const;

    /// Waits for at most `patience`. The lock lasts as long as this object.
    Outcome take(std::chrono::milliseconds patience);

    /// The process that holds the lock, if it runs on this machine.
    std::optional<qint64> holder() const;

private:
    Outcome tryOnce();

    QDir m_directory;
    FileDescriptor m_directoryLock;
    FileDescriptor m_fileLock;
};

} // namespace pobblewig
