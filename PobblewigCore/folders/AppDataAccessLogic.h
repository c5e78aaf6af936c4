#pragma once

#include "folders/AppDataReading.h"

#include <QByteArrayView>

namespace pobblewig {

struct AppDataAccessError {
    QString message;
};

/// The end of a text.
struct AppDataTail {
    QString text;
    int shown = 0;
    int total = 0;
};

/// What may be read of the folders that the user named, and how it is shown to the model.
namespace AppDataAccessLogic {

inline constexpr qint64 maxFileBytes = 2'097'152;
inline constexpr int defaultTailLines = 200;
inline constexpr int maxTailLines = 400;
inline constexpr int maxListingEntries = 200;

/// Only a "~" that stands alone before the first slash is the home directory.
QString expandTilde(const QString& path, const QString& home);

/// Where a request points, its outer slashes aside. A request that climbs above the root is
/// refused even if it would come back; where links lead is the reader's to find out.
tl::expected<AppDataLocation, AppDataAccessError> resolve(
    const QString& rootPath, const QString& request);

/// Whether a file's name is one that secrets go by. Neither case nor what some file systems
/// overlook (compatibility forms, invisible characters, blanks and dots at the end) hides it, nor
/// the ending of a copy.
bool isDenied(const QString& basename);

/// The part of a path that must not be read: its file, or a folder on the way.
std::optional<QString> deniedPart(const QString& path);

/// Whether the first 8192 bytes hold no NUL.
bool looksLikeText(QByteArrayView bytes);

/// The last lines. A line break at the very end begins no further line.
AppDataTail tail(QByteArrayView bytes, int count);

/// On one line and of bounded length, whatever the name holds.
QString shownName(const QString& name);
QString sourceLine(const QString& name, const QString& rootPath, bool enabled);
QString listingLine(const AppDataEntry& entry);

} // namespace AppDataAccessLogic

} // namespace pobblewig
