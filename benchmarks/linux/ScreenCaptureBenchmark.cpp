// Compares one look at a window of 1568 x 900 with what cannot be saved of it: to fetch the same
// pixels from the X server and to encode them.

#include "Figure.h"
#include "PobblewigLinux/x11/X11ScreenCapture.h"
#include "support/Awaited.h"
#include "support/ForeignWindow.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

namespace pobblewig {

namespace {

constexpr QSize windowSize(1568, 900);
constexpr int rounds = 201;

/// Text and lines, as there are on a screen.
void draw(X11Connection& connection, xcb_window_t window)
{
    QImage page(windowSize, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    for (int y = 20; y < page.height(); y += 20)
        painter.drawText(
            10, y, QStringLiteral("The quick brown fox jumps over the lazy dog. ").repeated(6));
    painter.end();
    const auto context = xcb_generate_id(connection.get());
    xcb_create_gc(connection.get(), context, window, 0, nullptr);
    constexpr int strip = 30;
    for (int y = 0; y < page.height(); y += strip)
        xcb_put_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, context,
            std::uint16_t(page.width()), strip, 0, std::int16_t(y), 0, 24,
            std::uint32_t(page.bytesPerLine() * strip), page.constScanLine(y));
    xcb_free_gc(connection.get(), context);
}

qsizetype bareLook(X11Connection& connection, xcb_window_t window)
{
    const auto cookie = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
        std::uint16_t(windowSize.width()), std::uint16_t(windowSize.height()), ~0u);
    const X11Reply<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(connection.get(), cookie, nullptr));
    const QImage image(xcb_get_image_data(reply.get()), windowSize.width(), windowSize.height(),
        QImage::Format_RGB32);
    QBuffer jpeg;
    image.save(&jpeg, "jpeg", 70);
    return jpeg.size();
}

qsizetype look(X11ScreenCapture& capture)
{
    const auto shot = awaited(capture.captureForCurrentContext({}));
    if (!shot)
        qFatal("The window was not captured.");
    return shot->jpegData.size();
}

template <typename Measure>
double milliseconds(const Measure& measure)
{
    QElapsedTimer clock;
    clock.start();
    measure();
    return double(clock.nsecsElapsed()) / 1e6;
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    using namespace pobblewig;
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QGuiApplication application(argc, argv);
    const auto connection = X11Connection::create();
    if (!connection)
        qFatal("ScreenCaptureBenchmark needs an X server.");
    X11ScreenCapture capture(*connection,
        [](xcb_window_t) {
            return FrontmostApp { QStringLiteral("Writer"), QStringLiteral("org.example.Writer") };
        },
        {});
    const ForeignWindow window(
        "Draft", QRect({ 20, 40 }, windowSize), 0xffffff, ForeignWindow::Kind::managed);
    const std::vector active { window.id() };
    if (!QTest::qWaitFor(
            [&] { return connection->values(connection->root(), "_NET_ACTIVE_WINDOW") == active; }))
        qFatal("The window did not come to the front.");
    draw(*connection, window.id());

    std::vector<double> ours;
    std::vector<double> bare;
    for (int round = 0; round < rounds; ++round) {
        qsizetype sizes[2] = {};
        bare.push_back(milliseconds([&] { sizes[0] = bareLook(*connection, window.id()); }));
        ours.push_back(milliseconds([&] { sizes[1] = look(capture); }));
        if (sizes[0] != sizes[1])
            qFatal("The two pictures differ.");
    }
    Figure { .measured = "one look at 1568 x 900",
        .value = median(ours),
        .peer = "grab and encode alone",
        .peerValue = median(bare) }
        .report();
}
