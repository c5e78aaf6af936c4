#pragma once

#include "folders/AppDataListing.h"

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <memory>

namespace pobblewig {

/// A path that was asked for, and the folder that it must not leave.
struct AppDataLocation {
    QString root;

    /// Relative to the root, and empty for the root itself. May hold "..", and links on the way.
    QString path;
};

struct AppDataFault {
    enum class Kind {
        escapesRoot,

        /// Nothing there, or not what was asked for.
        notThere,
        unreadable,
    };

    Kind kind = Kind::unreadable;
    QString text;

    const QString& description() const { return text; }
};

/// A regular file that was reached. Whatever becomes of its name, this stays the same file.
class AppDataFile {
public:
    virtual ~AppDataFile() = default;

    /// Relative to the root, with all links resolved.
    virtual const QString& realPath() const = 0;
    virtual qint64 size() const = 0;

    /// The first bytes, `limit` at most.
    virtual tl::expected<QByteArray, AppDataFault> read(qint64 limit) const = 0;
};

/// Reaches what lies beneath a root, and nothing else, even while somebody swaps links. May be
/// asked on any thread.
class AppDataReading {
public:
    virtual ~AppDataReading() = default;

    /// Refuses whatever is no regular file, without waiting for it.
    virtual tl::expected<std::unique_ptr<AppDataFile>, AppDataFault> open(
        const AppDataLocation& location) const = 0;

    /// What stands in a folder, the folders in it not opened.
    virtual tl::expected<AppDataListing, AppDataFault> list(
        const AppDataLocation& location, int limit) const = 0;
};

} // namespace pobblewig
