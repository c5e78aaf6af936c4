#pragma once

#include "foundation/Time.h"

#include <QString>

#include <optional>
#include <vector>

namespace pobblewig {

struct AppDataEntry {
    QString name;
    bool isFolder = false;
    std::optional<TimePoint> modified;

    bool operator==(const AppDataEntry&) const = default;
};

/// The newest entries of a folder. Keeps at most `limit`, however many are added.
class AppDataListing {
public:
    explicit AppDataListing(int limit, QString realPath = {});

    /// The folder's path relative to the root, with all links resolved.
    const QString& realPath() const { return m_realPath; }

    /// Undated entries come last; entries with the same date are sorted by name.
    std::vector<AppDataEntry> newestFirst() const;

    /// The number of entries added but not kept.
    qint64 omitted() const { return m_added - std::ssize(m_newest); }

    void add(AppDataEntry entry);

private:
    qsizetype m_limit;
    QString m_realPath;
    qint64 m_added = 0;

    /// A heap with the oldest entry on top.
    std::vector<AppDataEntry> m_newest;
};

} // namespace pobblewig
