#pragma once

#include "foundation/DataDirectory.h"
#include "foundation/JSONCodec.h"

namespace pobblewig {

/// Reads and writes a JSON file, pretty-printed with sorted keys, so that equal values give equal
/// bytes.
///
/// A file over 64 MiB, or nested deeper than 128 levels, counts as corrupt.
class JSONFileStore {
public:
    JSONFileStore(DataDirectory directory, const QString& fileName);

    const QString& path() const { return m_path; }

    /// Returns nothing if there is no readable file. A file that does not decode is logged and
    /// renamed to "name.corrupt-2026-03-01T08-15-00Z"; the result is then nothing as well. So it is
    /// for a file that cannot be read at the moment, which stays as it is.
    template <typename Value>
    std::optional<Value> load() const
    {
        const auto document = readDocument();
        if (!document)
            return std::nullopt;
        auto value = json::decode<Value>(*document);
        if (value)
            return std::move(*value);
        moveAside(value.error().description());
        return std::nullopt;
    }

    /// Whether the last `load` found a file that it could not read.
    bool isUnreadable() const;

    /// Creates the directory if need be. A crash at any moment leaves either the old file or the
    /// new one. Refuses a value whose file could not be read back, and to replace an unreadable
    /// file. The outcome shows in the directory's health.
    template <typename Value>
    tl::expected<void, FileError> save(const Value& value) const
    {
        if (isUnreadable())
            return tl::unexpected(FileError { QStringLiteral("the old file cannot be read") });
        auto outcome = write(json::text(value));
        record(outcome);
        return outcome;
    }

    /// The first half of `save`, for any thread. Only one may write the file at a time.
    tl::expected<void, FileError> write(const QByteArray& text) const;

    /// The second half of `save`, for the main thread.
    void record(const tl::expected<void, FileError>& outcome) const;

    /// Removes the file. Failures, a missing file included, are ignored.
    void remove() const;

    /// "Pobblewig" in the user's data directory.
    static QDir defaultDirectory();

    /// Renames the "SkritBuddy" directory of early versions, unless the current one exists.
    static void migrateLegacyDirectory(const QDir& base);
    static void migrateLegacyDefaultDirectory();

private:
    std::optional<QJsonValue> readDocument() const;
    void moveAside(const QString& problem) const;
    void leaveAlone(const QString& problem) const;

    DataDirectory m_directory;
    QString m_path;
};

} // namespace pobblewig
