#pragma once

#include "foundation/DataDirectory.h"
#include "foundation/JSONCodec.h"

namespace pobblewig {

/// The one reader and writer of a JSON file: pretty-printed with sorted keys, so that the same
/// value always gives the same bytes.
///
/// Files over 64 MiB, or nested deeper than 128 levels, count as corrupt.
class JSONFileStore {
public:
    JSONFileStore(DataDirectory directory, const QString& fileName);

    const QString& path() const { return m_path; }

    /// Nothing if there is no readable file. A file that does not decode is moved aside, to
    /// "name.corrupt-2026-03-01T08-15-00Z", is logged, and is nothing as well.
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

    /// Creates the directory if need be; a crash at any moment leaves the old file or the new one.
    template <typename Value>
    tl::expected<void, FileError> save(const Value& value) const
    {
        return write(json::text(value));
    }

    /// Removes the file. A failure, a missing file included, is passed over.
    void remove() const;

    /// "Pobblewig" in the user's data home.
    static QDir defaultDirectory();

    /// Renames a "SkritBuddy" directory of early versions, if there is none of the present name.
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
