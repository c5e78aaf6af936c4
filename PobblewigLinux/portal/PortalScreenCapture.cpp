#include "PobblewigLinux/portal/PortalScreenCapture.h"

#include "PobblewigLinux/desktop/ApplicationIdentifiers.h"
#include "PobblewigLinux/portal/PortalRequest.h"
#include "screen/ScreenshotEncoding.h"
#include "settings/ExcludedApps.h"

#include <QCoroFuture>
#include <QFile>
#include <QUrl>
#include <QtConcurrent>

namespace pobblewig {

namespace {

constexpr qint64 largestFile = 64 << 20;

tl::unexpected<ScreenCaptureError> failed(ScreenCaptureError::Kind kind, const QString& app = {})
{
    return tl::unexpected(ScreenCaptureError { kind, app });
}

/// Reads and removes the file. A portal can only deliver a picture as a file, and nothing else
/// removes it; its name is removed before it is read.
QImage takenOut(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    QFile::remove(path);
    return QImage::fromData(file.read(largestFile));
}

} // namespace

PortalScreenCapture::PortalScreenCapture(QDBusConnection bus, FrontmostAppProviding& frontmost,
    std::set<QString> alwaysExcluded, std::chrono::milliseconds patience)
    : m_bus(std::move(bus))
    , m_frontmost(frontmost)
    , m_alwaysExcluded(std::move(alwaysExcluded))
    , m_patience(patience)
{
}

Task<PortalScreenCapture::Result> PortalScreenCapture::captureForCurrentContext(
    std::set<QString> excludedBundleIDs)
{
    using Kind = ScreenCaptureError::Kind;
    excludedBundleIDs.insert(m_alwaysExcluded.begin(), m_alwaysExcluded.end());
    const auto app = m_frontmost.frontmostApp();
    const ExcludedApps excluded(excludedBundleIDs, ApplicationIdentifiers::identifier);
    if (app && excluded.contains(app->bundleIdentifier))
        co_return failed(Kind::excludedApp, app->name);

    const PortalRequest::Question question {
        .interface = QStringLiteral("org.freedesktop.portal.Screenshot"),
        .method = QStringLiteral("Screenshot"),
        .arguments = { QString() },
        .options = { { QStringLiteral("interactive"), true } },
    };
    const auto answer = co_await PortalRequest::ask(m_bus, question, m_patience);
    if (!answer)
        co_return failed(Kind::noCaptureTarget);
    if (answer->response != 0)
        co_return failed(Kind::permissionDenied);

    const QUrl place(answer->results.value(QStringLiteral("uri")).toString());
    const auto image = co_await QtConcurrent::run(takenOut, place.toLocalFile());
    if (image.isNull())
        co_return failed(Kind::noCaptureTarget);
    const auto jpeg = co_await ScreenshotEncoding::screenshotData(image);
    if (!jpeg)
        co_return failed(Kind::encodingFailed);
    co_return CapturedScreenshot { *jpeg,
        QStringLiteral("Captured the chosen part of the screen") };
}

} // namespace pobblewig
