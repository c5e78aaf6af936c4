#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <optional>
#include <system_error>

namespace pobblewig {

struct FileError {
    QString text;

    const QString& description() const { return text; }
};

/// The system calls of a durable write. Each can be overridden, so that a test can make any of them
/// fail.
class FileOperations {
public:
    virtual ~FileOperations() = default;

    /// Creates the directory and those above it, for this user only.
    virtual std::error_code makePath(const QString& directory) const;

    /// Opens an empty file for writing; the caller has to `close` the descriptor. Without
    /// permissions the file is for this user only.
    virtual tl::expected<int, std::error_code> create(
        const QString& path, std::optional<unsigned> permissions) const;

    /// Returns the number of bytes written, which may be fewer than were given.
    virtual tl::expected<qsizetype, std::error_code> write(int file, QByteArrayView bytes) const;

    /// Returns once the file's contents are on the disk.
    virtual std::error_code sync(int file) const;
    virtual std::error_code close(int file) const;
    virtual std::error_code rename(const QString& from, const QString& to) const;

    /// Returns once the names in the directory are on the disk.
    virtual std::error_code syncDirectory(const QString& directory) const;
    virtual void remove(const QString& path) const;
};

/// Replaces the file's contents. A crash, a power cut or a full disk at any moment leaves either
/// the whole old contents or the whole new ones. Follows a symbolic link and keeps the permissions
/// of an existing file.
tl::expected<void, FileError> writeDurably(
    const QString& path, QByteArrayView bytes, const FileOperations& operations);

} // namespace pobblewig
