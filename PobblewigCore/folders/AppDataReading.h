#pragma once

#include "folders/AppDataListing.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <memory>

namespace pobblewig {

/// A requested path, and the folder that it must not leave.
struct AppDataLocation {
    QString root;

    /// Relative to the root, and empty for the root itself. May contain ".." and links.
    QString path;
};

struct AppDataFault {
    enum class Kind {
        escapesRoot,

        /// Nothing exists there, or it is not of the requested kind.
        notThere,
        unreadable,
    };

    Kind kind = Kind::unreadable;
    QString text;

    const QString& description() const { return text; }
};

/// An open regular file. It stays the same file whatever happens to its name.
class AppDataFile {
public:
    virtual ~AppDataFile() = default;

    /// Relative to the root, with all links resolved.
    virtual const QString& realPath() const = 0;
    virtual qint64 size() const = 0;

    /// The first bytes, `limit` at most.
    virtual tl::expected<QByteArray, AppDataFault> read(qint64 limit) const = 0;
};

/// Reads what lies below a root and nothing else, even if links are replaced meanwhile.
/// Thread-safe.
class AppDataReading {
public:
    virtual ~AppDataReading() = default;

    /// Refuses anything that is not a regular file, without blocking on it.
    virtual tl::expected<std::unique_ptr<AppDataFile>, AppDataFault> open(
        const AppDataLocation& location) const = 0;

    /// Lists a folder without opening the folders in it.
    virtual tl::expected<AppDataListing, AppDataFault> list(
        const AppDataLocation& location, int limit) const = 0;
};

} // namespace pobblewig
