#include "PobblewigLinux/pictures/PNGPixels.h"

#include <csetjmp>
#include <memory>
#include <png.h>

namespace pobblewig {

namespace {

constexpr auto screenGamma = 2.2;
constexpr auto opaque = 0xff;

struct Target {
    QImage picture;
    bool isWhole = false;
};

Target& target(png_structp png)
{
    return *static_cast<Target*>(png_get_progressive_ptr(png));
}

/// Whatever the file has becomes blue, green, red and alpha of a byte each.
void chooseFormat(png_structp png, png_infop info)
{
    double gamma = 0;
    if (png_get_gAMA(png, info, &gamma))
        png_set_gamma(png, screenGamma, gamma);
    png_set_expand(png);
    png_set_scale_16(png);
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, opaque, PNG_FILLER_AFTER);
    png_set_bgr(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    const auto& picture = target(png).picture;
    if (png_get_rowbytes(png, info) != size_t(picture.bytesPerLine())
        || png_get_image_height(png, info) != png_uint_32(picture.height()))
        png_error(png, "another size");
}

void takeRow(png_structp png, png_bytep row, png_uint_32 number, int)
{
    if (row)
        png_progressive_combine_row(png, target(png).picture.scanLine(int(number)), row);
}

void takeEnd(png_structp png, png_infop)
{
    target(png).isWhole = true;
}

[[noreturn]] void fail(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void ignore(png_structp, png_const_charp)
{
}

/// Holds nothing that a jump would leave behind.
void decode(png_structp png, png_infop info, png_bytep bytes, size_t size)
{
    if (setjmp(png_jmpbuf(png)) == 0)
        png_process_data(png, info, bytes, size);
}

struct Closing {
    void operator()(png_structp png) const { png_destroy_read_struct(&png, nullptr, nullptr); }
};

} // namespace

QImage decodePNGPixels(QSize size, const QByteArray& file)
{
    Target target { QImage(size, QImage::Format_ARGB32) };
    const std::unique_ptr<png_struct, Closing> png(
        png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore));
    auto* info = png ? png_create_info_struct(png.get()) : nullptr;
    if (!info || target.picture.isNull())
        return {};
    png_set_user_limits(png.get(), png_uint_32(size.width()), png_uint_32(size.height()));
    png_set_progressive_read_fn(png.get(), &target, chooseFormat, takeRow, takeEnd);
    // It is only read.
    auto* const bytes = reinterpret_cast<png_bytep>(const_cast<char*>(file.constData()));
    decode(png.get(), info, bytes, size_t(file.size()));
    png_destroy_info_struct(png.get(), &info);
    return target.isWhole ? target.picture : QImage();
}

} // namespace pobblewig
