#include "PobblewigLinux/pictures/PNGChunks.h"

#include <QtEndian>

#include <zlib.h>

namespace pobblewig {

namespace {

constexpr qsizetype nameLength = 4;
constexpr qsizetype numberLength = 4;

quint32 checksum(QByteArrayView bytes)
{
    const auto* const data = reinterpret_cast<const Bytef*>(bytes.data());
    return quint32(::crc32_z(0, data, size_t(bytes.size())));
}

QByteArray number(quint32 value)
{
    QByteArray bytes(numberLength, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

} // namespace

PNGChunks::PNGChunks(QByteArrayView file)
    : m_rest(file.sliced(std::min(signature.size(), file.size())))
{
}

std::optional<PNGChunk> PNGChunks::next()
{
    constexpr auto frameLength = numberLength + nameLength + numberLength;
    if (m_rest.size() < frameLength)
        return std::nullopt;
    const qint64 length = qFromBigEndian<quint32>(m_rest.data());
    if (length > m_rest.size() - frameLength)
        return std::nullopt;
    const auto content = m_rest.sliced(numberLength, nameLength + length);
    const auto sum = qFromBigEndian<quint32>(m_rest.data() + numberLength + content.size());
    if (sum != checksum(content))
        return std::nullopt;
    const auto whole = m_rest.first(frameLength + length);
    m_rest = m_rest.sliced(whole.size());
    return PNGChunk { content.first(nameLength), content.sliced(nameLength), whole };
}

QByteArray PNGChunks::written(const PNGChunk& chunk)
{
    const auto content = chunk.name.toByteArray() + chunk.data.toByteArray();
    return number(quint32(chunk.data.size())) + content + number(checksum(content));
}

} // namespace pobblewig
