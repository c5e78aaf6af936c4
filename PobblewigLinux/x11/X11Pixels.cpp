#include "PobblewigLinux/x11/X11Pixels.h"

#include <optional>
#include <span>

namespace pobblewig {

namespace {

constexpr auto everyPlane = ~0u;

struct Layout {
    QImage::Format format;
    qsizetype bytesPerLine;
};

struct KnownFormat {
    int depth;
    int bitsPerPixel;
    QImage::Format format;
};

constexpr KnownFormat knownFormats[] = {
    { 15, 16, QImage::Format_RGB555 },
    { 16, 16, QImage::Format_RGB16 },
    { 24, 32, QImage::Format_RGB32 },
    { 30, 32, QImage::Format_RGB30 },
    { 32, 32, QImage::Format_ARGB32_Premultiplied },
};

bool hasOurByteOrder(const xcb_setup_t* setup)
{
    const auto isLittle = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    return isLittle == (Q_BYTE_ORDER == Q_LITTLE_ENDIAN);
}

std::optional<Layout> layout(const xcb_setup_t* setup, int depth, int width)
{
    if (!hasOurByteOrder(setup))
        return std::nullopt;
    const auto* first = xcb_setup_pixmap_formats(setup);
    for (const auto& format : std::span(first, setup->pixmap_formats_len)) {
        for (const auto& known : knownFormats) {
            if (known.depth != depth || format.depth != depth
                || known.bitsPerPixel != format.bits_per_pixel)
                continue;
            const auto pad = qsizetype(format.scanline_pad);
            const auto bits = qsizetype(width) * format.bits_per_pixel;
            return Layout { known.format, (bits + pad - 1) / pad * pad / 8 };
        }
    }
    return std::nullopt;
}

} // namespace

QImage X11Pixels::read(
    X11Connection& connection, xcb_drawable_t drawable, const QRect& part, int depth)
{
    auto* const xcb = connection.get();
    const auto known = layout(xcb_get_setup(xcb), depth, part.width());
    if (!known || part.isEmpty())
        return {};
    const auto cookie = xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable,
        std::int16_t(part.x()), std::int16_t(part.y()), std::uint16_t(part.width()),
        std::uint16_t(part.height()), everyPlane);
    // Shared memory is no faster for a single read, since both sides have to map it first.
    X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(xcb, cookie, nullptr));
    if (!reply || xcb_get_image_data_length(reply.get()) < known->bytesPerLine * part.height())
        return {};
    auto* const pixels = xcb_get_image_data(reply.get());
    return QImage(pixels, part.width(), part.height(), known->bytesPerLine, known->format,
        std::free, reply.release());
}

} // namespace pobblewig
