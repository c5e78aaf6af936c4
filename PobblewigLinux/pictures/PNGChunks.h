#pragma once

#include <QByteArray>

#include <optional>

namespace pobblewig {

struct PNGChunk {
    QByteArrayView name;
    QByteArrayView data;
    /// As it stands in the file.
    QByteArrayView whole = {};
};

/// The pieces that a PNG consists of.
class PNGChunks {
public:
    static constexpr QByteArrayView signature { "\x89PNG\r\n\x1a\n" };

    /// Reads the chunks behind the signature. The bytes must outlive this object.
    explicit PNGChunks(QByteArrayView file);

    /// Returns nothing if the rest is cut off, or damaged by its checksum.
    std::optional<PNGChunk> next();

    static QByteArray written(const PNGChunk& chunk);

private:
    QByteArrayView m_rest;
};

} // namespace pobblewig
