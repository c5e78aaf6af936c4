#include "PobblewigLinux/x11/X11ScreenCapture.h"

#include "PobblewigLinux/desktop/ApplicationIdentifiers.h"
#include "PobblewigLinux/x11/X11WindowContents.h"
#include "screen/ScreenCaptureLogic.h"
#include "screen/ScreenshotEncoding.h"

#include <QCoroTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

/// A part of a picture. It is black without contents.
struct Layer {
    X11TopLevel window;
    std::unique_ptr<X11WindowContents> contents;
};

using Layers = std::vector<Layer>;

constexpr auto pauseBetweenLooks = 40ms;
constexpr int mostLooks = 15;

tl::unexpected<ScreenCaptureError> failed(ScreenCaptureError::Kind kind, const QString& app = {})
{
    return tl::unexpected(ScreenCaptureError { kind, app });
}

/// The first display, in pixels.
QRect mainDisplay()
{
    const auto* display = QGuiApplication::primaryScreen();
    if (!display)
        return {};
    return { display->geometry().topLeft(),
        (QSizeF(display->geometry().size()) * display->devicePixelRatio()).toSize() };
}

bool isPainting(const Layer& layer)
{
    return layer.contents && !layer.contents->hasSettled();
}

/// Ends early when every program has painted. Covered parts of one that does not respond stay
/// black.
Task<> repainted(std::shared_ptr<Layers> layers)
{
    // count_if, because each layer has to be checked every time.
    for (int look = 0; look < mostLooks && std::ranges::count_if(*layers, isPainting); ++look)
        co_await QCoro::sleepFor(pauseBetweenLooks);
}

std::vector<ScreenWindow> frames(const std::vector<X11TopLevel>& topLevels)
{
    std::vector<ScreenWindow> windows;
    windows.reserve(topLevels.size());
    for (const auto& topLevel : topLevels)
        windows.push_back({ .frame = topLevel.frame });
    return windows;
}

/// Paints from the bottom up.
QImage painted(const Layers& layers, const QRect& display)
{
    QImage picture(display.size(), QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.translate(-display.topLeft());
    for (const auto& [window, contents] : layers) {
        if (!contents) {
            painter.fillRect(window.frame, Qt::black);
            continue;
        }
        const auto part = window.frame & display;
        painter.setClipRegion(window.shape.translated(window.frame.topLeft()));
        painter.drawImage(part.topLeft(), contents->picture(part));
        painter.setClipping(false);
    }
    painter.end();
    return picture;
}

/// The layers of a picture of the display. `windows` and `topLevels` have the same order.
Layers displayLayers(X11Connection& connection, const std::vector<X11TopLevel>& topLevels,
    const std::vector<ScreenWindow>& windows, const std::vector<Visibility>& visibilities,
    const QRect& display)
{
    const auto composition = ScreenCaptureLogic::composition(windows, visibilities, display);
    Layers layers;
    layers.reserve(composition.layers.size() + 1);
    const auto add = [&](const X11TopLevel& window, const QRegion& covered) {
        layers.push_back(
            { window, std::make_unique<X11WindowContents>(connection, window, covered) });
    };
    auto root = X11WindowTree::rootWindow(connection);
    root.shape = composition.desktop;
    if (!root.shape.isEmpty())
        add(root, {});
    for (const auto index : composition.layers) {
        if (visibilities[index] == Visibility::blanked)
            layers.push_back({ topLevels[index], nullptr });
        else
            add(topLevels[index], ScreenCaptureLogic::coveredPart(windows, index, root.frame));
    }
    return layers;
}

} // namespace

X11ScreenCapture::X11ScreenCapture(
    X11Connection& connection, AppOfWindow appOfWindow, std::set<QString> alwaysExcluded)
    : m_connection(connection)
    , m_appOfWindow(std::move(appOfWindow))
    , m_alwaysExcluded(std::move(alwaysExcluded))
    , m_front(connection)
{
}

Task<X11ScreenCapture::Result> X11ScreenCapture::captureForCurrentContext(
    std::set<QString> excludedBundleIDs)
{
    using Kind = ScreenCaptureError::Kind;
    excludedBundleIDs.insert(m_alwaysExcluded.begin(), m_alwaysExcluded.end());
    const ExcludedApps excluded(excludedBundleIDs, ApplicationIdentifiers::identifier);
    auto label = QStringLiteral("the main display");
    QImage image;
    if (const auto front = m_front.window()) {
        const auto app = m_appOfWindow(*front).value_or(FrontmostApp());
        const auto name = app.name.isEmpty() ? QStringLiteral("the frontmost app") : app.name;
        if (excluded.contains(app.bundleIdentifier))
            co_return failed(Kind::excludedApp, name);
        label = ScreenCaptureLogic::windowLabel(X11WindowTree::title(m_connection, *front), name);
        image = co_await windowPicture(*front);
    } else {
        image = co_await displayPicture(excluded);
    }
    if (image.isNull())
        co_return failed(Kind::noCaptureTarget);
    const auto jpeg = co_await ScreenshotEncoding::screenshotData(std::move(image));
    if (!jpeg)
        co_return failed(Kind::encodingFailed);
    co_return CapturedScreenshot { *jpeg, QStringLiteral("Captured ") + label };
}

Task<QImage> X11ScreenCapture::windowPicture(xcb_window_t client)
{
    const auto topLevels = X11WindowTree::topLevels(m_connection);
    const auto found = std::ranges::find(topLevels, client, &X11TopLevel::client);
    const auto content = X11WindowTree::content(m_connection, client);
    if (found == topLevels.end() || !content)
        co_return QImage();
    const auto part = *content & found->frame;
    const auto index = std::size_t(found - topLevels.begin());
    const auto covered = ScreenCaptureLogic::coveredPart(
        frames(topLevels), index, X11WindowTree::rootWindow(m_connection).frame);
    const auto layers = std::make_shared<Layers>();
    layers->push_back(
        { *found, std::make_unique<X11WindowContents>(m_connection, *found, covered & part) });
    co_await repainted(layers);
    const auto picture = layers->front().contents->picture(part);
    // A window that is closing leaves only its frame.
    co_return X11WindowTree::isOnScreen(m_connection, client) ? picture : QImage();
}

Task<QImage> X11ScreenCapture::displayPicture(ExcludedApps excluded)
{
    const auto display = mainDisplay();
    const auto topLevels = X11WindowTree::topLevels(m_connection);
    std::vector<ScreenWindow> windows;
    windows.reserve(topLevels.size());
    for (const auto& topLevel : topLevels)
        windows.push_back(described(topLevel));
    const auto visibilities = ScreenCaptureLogic::visibilities(windows, excluded);
    const auto layers = std::make_shared<Layers>(
        displayLayers(m_connection, topLevels, windows, visibilities, display));
    co_await repainted(layers);
    co_return painted(*layers, display);
}

ScreenWindow X11ScreenCapture::described(const X11TopLevel& topLevel)
{
    const auto app = m_appOfWindow(topLevel.client);
    return {
        .frame = topLevel.frame,
        .isOpaque = topLevel.isOpaque(),
        .isOurs = X11WindowTree::isOurs(m_connection, topLevel.client),
        .connection = X11WindowTree::connectionOf(m_connection, topLevel.client),
        .processID = X11WindowTree::processID(m_connection, topLevel.client),
        .bundleIdentifier = app ? app->bundleIdentifier : QString(),
    };
}

} // namespace pobblewig
