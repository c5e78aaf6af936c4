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
    /// renamed to "name.corrupt-2026-03-01T08-15-00Z"; the result is then nothing as well.
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

    /// Creates the directory if need be. A crash at any moment leaves either the old file or the
    /// new one.
    template <typename Value>
    tl::expected<void, FileError> save(const Value& value) const
    {
        return write(json::text(value));
    }

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
    tl::expected<void, FileError> write(const QByteArray& bytes) const;

    DataDirectory m_directory;
    QString m_path;
};

} // namespace pobblewig
