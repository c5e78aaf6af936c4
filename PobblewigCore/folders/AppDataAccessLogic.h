#pragma once

#include "folders/AppDataReading.h"

#include <QByteArrayView>

namespace pobblewig {

struct AppDataAccessError {
    QString message;
};

/// The last lines of a text. The beginning of a line that alone is too long ends in "…".
struct AppDataTail {
    QString text;
    int shown = 0;
    int total = 0;
};

/// Decides what may be read in the user's shared folders, and how it appears to the model.
namespace AppDataAccessLogic {

inline constexpr qint64 maxFileBytes = 2'097'152;
inline constexpr int defaultTailLines = 200;
inline constexpr int maxTailLines = 400;
inline constexpr int maxListingEntries = 200;

/// Replaces a "~" by the home directory only if it stands alone before the first slash.
QString expandTilde(const QString& path, const QString& home);

/// The location that a request means, without its outer slashes. A request that climbs above the
/// root is refused, even if it would return. Links are resolved later, by the reader.
tl::expected<AppDataLocation, AppDataAccessError> resolve(
    const QString& rootPath, const QString& request);

/// Whether a file name is typical of secrets. Ignores case, the ending of a copy, and what some
/// file systems ignore: compatibility forms, invisible characters, blanks and dots at the end.
bool isDenied(const QString& basename);

/// The folder on a path that must not be listed.
std::optional<QString> deniedFolder(const QString& path);

/// The part of a path that must not be read: its file, or one of its folders.
std::optional<QString> deniedPart(const QString& path);

/// Whether the first 8192 bytes contain no NUL.
bool looksLikeText(QByteArrayView bytes);

/// As many of the last lines as fit into `characters`, but at most `count` and at least one. A line
/// break at the very end does not start another line.
AppDataTail tail(QByteArrayView bytes, int count, qsizetype characters);

/// The name on one line and of limited length.
QString shownName(const QString& name);
QString sourceLine(const QString& name, const QString& rootPath, bool enabled);
QString listingLine(const AppDataEntry& entry);

} // namespace AppDataAccessLogic

} // namespace pobblewig
