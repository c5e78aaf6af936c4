#include "PobblewigDesktop/contactsheet/AnimatedPNG.h"

#include <QBuffer>
#include <QtEndian>

namespace pobblewig {

namespace {

constexpr qsizetype signatureLength = 8;

QByteArray number(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray shortNumber(quint16 value)
{
    QByteArray bytes(2, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

quint32 checksum(const QByteArray& bytes)
{
    auto sum = 0xFFFFFFFFu;
    for (const auto byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? 0xEDB88320u : 0);
    }
    return ~sum;
}

QByteArray chunk(const QByteArray& name, const QByteArray& content)
{
    const auto named = name + content;
    return number(quint32(content.size())) + named + number(checksum(named));
}

/// The contents of the chunks of a name in a still picture.
std::vector<QByteArray> contents(const QByteArray& png, const QByteArray& name)
{
    std::vector<QByteArray> found;
    for (auto at = signatureLength; at + 12 <= png.size();) {
        const auto length = qFromBigEndian<quint32>(png.constData() + at);
        if (png.mid(at + 4, 4) == name)
            found.push_back(png.mid(at + 8, length));
        at += 12 + qsizetype(length);
    }
    return found;
}

QByteArray still(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.convertToFormat(QImage::Format_RGB888).save(&buffer, "PNG", 0);
    return bytes;
}

QRect difference(const QImage& one, const QImage& other)
{
    QRect changed;
    for (int y = 0; y < one.height(); ++y) {
        const auto* before = reinterpret_cast<const QRgb*>(one.constScanLine(y));
        const auto* after = reinterpret_cast<const QRgb*>(other.constScanLine(y));
        for (int x = 0; x < one.width(); ++x) {
            if (before[x] != after[x])
                changed |= QRect(x, y, 1, 1);
        }
    }
    return changed;
}

} // namespace

void AnimatedPNG::append(const QImage& frame, int milliseconds)
{
    const auto opaque = frame.convertToFormat(QImage::Format_RGB32);
    const auto changed = m_frames.empty() ? opaque.rect() : difference(m_last, opaque);
    if (changed.isEmpty()) {
        m_frames.back().milliseconds += milliseconds;
        return;
    }
    m_frames.push_back({ opaque.copy(changed), changed.topLeft(), milliseconds });
    m_last = opaque;
}

std::optional<QByteArray> AnimatedPNG::encoded() const
{
    if (m_frames.empty())
        return std::nullopt;
    const auto first = still(m_frames.front().image);
    auto bytes = first.left(signatureLength) + chunk("IHDR", contents(first, "IHDR").front())
        + chunk("acTL", number(quint32(m_frames.size())) + number(0));
    auto sequence = 0u;
    for (const auto& frame : m_frames) {
        const auto& [image, corner, milliseconds] = frame;
        bytes += chunk("fcTL",
            number(sequence++) + number(quint32(image.width())) + number(quint32(image.height()))
                + number(quint32(corner.x())) + number(quint32(corner.y()))
                + shortNumber(quint16(milliseconds)) + shortNumber(1000) + QByteArray(2, '\0'));
        for (const auto& data : contents(still(image), "IDAT")) {
            const auto isFirst = &frame == &m_frames.front();
            bytes += isFirst ? chunk("IDAT", data) : chunk("fdAT", number(sequence++) + data);
        }
    }
    return bytes + chunk("IEND", {});
}

} // namespace pobblewig
