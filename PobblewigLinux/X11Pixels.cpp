#include "PobblewigLinux/X11Pixels.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <optional>
#include <span>

#include <xcb/shm.h>

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

/// Memory that the server writes into; ends with the last picture that shows it.
void* sharedMemory(xcb_connection_t* connection, std::size_t size, xcb_shm_seg_t segment)
{
    const auto id = shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
    if (id < 0)
        return nullptr;
    auto* const memory = shmat(id, nullptr, 0);
    const X11Reply<xcb_generic_error_t> error(
        xcb_request_check(connection, xcb_shm_attach_checked(connection, segment, id, false)));
    shmctl(id, IPC_RMID, nullptr);
    if (memory == reinterpret_cast<void*>(-1))
        return nullptr;
    if (!error)
        return memory;
    shmdt(memory);
    return nullptr;
}

QImage readShared(
    xcb_connection_t* connection, xcb_drawable_t drawable, const QRect& part, const Layout& layout)
{
    const auto* extension = xcb_get_extension_data(connection, &xcb_shm_id);
    if (!extension || !extension->present)
        return {};
    const auto segment = xcb_generate_id(connection);
    const auto size = std::size_t(layout.bytesPerLine) * std::size_t(part.height());
    auto* const memory = sharedMemory(connection, size, segment);
    if (!memory)
        return {};
    const auto cookie = xcb_shm_get_image(connection, drawable, std::int16_t(part.x()),
        std::int16_t(part.y()), std::uint16_t(part.width()), std::uint16_t(part.height()),
        everyPlane, XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0);
    xcb_shm_detach(connection, segment);
    const X11Reply<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(connection, cookie, nullptr));
    if (!reply) {
        shmdt(memory);
        return {};
    }
    return QImage(
        static_cast<uchar*>(memory), part.width(), part.height(), layout.bytesPerLine,
        layout.format, [](void* shared) { shmdt(shared); }, memory);
}

QImage readCopied(
    xcb_connection_t* connection, xcb_drawable_t drawable, const QRect& part, const Layout& layout)
{
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable,
        std::int16_t(part.x()), std::int16_t(part.y()), std::uint16_t(part.width()),
        std::uint16_t(part.height()), everyPlane);
    X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection, cookie, nullptr));
    if (!reply || xcb_get_image_data_length(reply.get()) < layout.bytesPerLine * part.height())
        return {};
    auto* const data = xcb_get_image_data(reply.get());
    return QImage(data, part.width(), part.height(), layout.bytesPerLine, layout.format, std::free,
        reply.release());
}

} // namespace

QImage X11Pixels::read(
    X11Connection& connection, xcb_drawable_t drawable, const QRect& part, int depth)
{
    const auto known = layout(xcb_get_setup(connection.get()), depth, part.width());
    if (!known || part.isEmpty())
        return {};
    const auto image = readShared(connection.get(), drawable, part, *known);
    return image.isNull() ? readCopied(connection.get(), drawable, part, *known) : image;
}

} // namespace pobblewig
