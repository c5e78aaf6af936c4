#include "PobblewigLinux/x11/X11ScreenCapture.h"

#include "support/Awaited.h"
#include "support/ForeignWindow.h"
#include "support/TableRow.h"

#include <QImage>
#include <QTemporaryDir>
#include <QWidget>

#include <xcb/composite.h>

namespace pobblewig {

namespace {

using Kind = ForeignWindow::Kind;

constexpr QRgb green = 0x00c000;
constexpr QRgb red = 0xc00000;
constexpr QRgb blue = 0x0000c0;
constexpr QRgb black = 0;

const auto vault = QStringLiteral("org.example.Vault");

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

} // namespace

class X11ScreenCaptureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(m_x11); }
    void cleanup()
    {
        m_apps.clear();
        m_asked = nullptr;
        m_excluded.clear();
    }

    void aCoveredWindowIsShownAndNothingOfItTouchesTheDisk_data() { compositors(); }
    void aCoveredWindowIsShownAndNothingOfItTouchesTheDisk()
    {
        QFETCH(bool, hasCompositor);
        const auto compositor = hasCompositor ? composite() : nullptr;
        const QTemporaryDir scratch;
        for (const auto* place : { "HOME", "TMPDIR", "XDG_CACHE_HOME", "XDG_DATA_HOME",
                 "XDG_RUNTIME_DIR", "XDG_STATE_HOME" })
            qputenv(place, scratch.path().toUtf8());
        const ForeignWindow front("Draft", { 100, 100, 300, 200 }, green);
        QVERIFY(comesToFront(front, "Writer"));
        const ForeignWindow cover("", { 0, 0, 800, 600 }, red, Kind::menu);
        const auto picture = captured();
        QCOMPARE(m_description, u"Captured \"Draft\" of Writer");
        QCOMPARE(picture.size(), QSize(300, 200));
        QVERIFY(isColored(picture, picture.rect(), green));
        QVERIFY(
            QDir(scratch.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void whatDoesNotAnswerStaysBlackWhereItWasCovered()
    {
        const ForeignWindow front("", { 100, 100, 300, 200 }, 0, Kind::unpainted);
        QVERIFY(comesToFront(front, ""));
        front.paint(green);
        const ForeignWindow cover("", { 200, 0, 300, 600 }, red, Kind::menu);
        const auto picture = captured();
        QCOMPARE(m_description, u"Captured the frontmost app");
        QVERIFY(isColored(picture, QRect(0, 0, 80, 200), green));
        QVERIFY(isColored(picture, QRect(120, 0, 180, 200), black));
    }

    void aWindowIsScaledToWhatAModelCanSee_data()
    {
        QTest::addColumn<QRect>("window");
        QTest::addColumn<QSize>("picture");
        row("larger than the screen", QRect(-50, 40, 3000, 1500), QSize(1568, 784));
        row("a pixel", QRect(200, 200, 1, 1), QSize(2, 2));
    }
    void aWindowIsScaledToWhatAModelCanSee()
    {
        QFETCH(QRect, window);
        const ForeignWindow front("", window, green);
        QVERIFY(comesToFront(front, "Writer"));
        const auto picture = captured();
        QTEST(picture.size(), "picture");
        QVERIFY(isColored(picture, picture.rect(), green));
    }

    void anExcludedAppInFrontIsRefusedByName()
    {
        const ForeignWindow front("Secrets", { 100, 100, 300, 200 }, green);
        QVERIFY(comesToFront(front, "Vault"));
        m_apps[front.id()].bundleIdentifier = vault;
        const ScreenCaptureError expected { ScreenCaptureError::Kind::excludedApp,
            QStringLiteral("Vault") };
        m_excluded = { vault.toUpper() };
        QVERIFY(capture().error() == expected);
        m_apps[front.id()].bundleIdentifier = QStringLiteral("org.mozilla.firefox");
        m_excluded = { QStringLiteral("Firefox") };
        QVERIFY(capture().error() == expected);
        m_apps[front.id()].bundleIdentifier = QStringLiteral("always.excluded");
        m_excluded.clear();
        QVERIFY(capture().error() == expected);

        // Talking with us does not change what the user looks at.
        QWidget panel;
        panel.show();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        QVERIFY(capture().error() == expected);
        front.destroy();
        QVERIFY(capture().has_value());
    }

    void aWindowThatGoesMeanwhileIsNoTarget_data()
    {
        QTest::addColumn<bool>("isDestroyed");
        row("destroyed", true);
        row("minimised", false);
    }
    void aWindowThatGoesMeanwhileIsNoTarget()
    {
        QFETCH(bool, isDestroyed);
        const ForeignWindow front("Draft", { 100, 100, 300, 200 }, green);
        QVERIFY(comesToFront(front, "Writer"));
        m_asked = [&] { isDestroyed ? front.destroy() : front.hide(); };
        QVERIFY(capture().error().kind == ScreenCaptureError::Kind::noCaptureTarget);
    }

    void theScreenIsShownWithoutUsAndWithoutExcludedApps_data() { compositors(); }
    void theScreenIsShownWithoutUsAndWithoutExcludedApps()
    {
        QFETCH(bool, hasCompositor);
        const auto compositor = hasCompositor ? composite() : nullptr;
        const ForeignWindow below("", { 100, 100, 400, 400 }, green, Kind::silent);
        const ForeignWindow secrets("", { 550, 100, 400, 400 }, blue, Kind::silent);
        const ForeignWindow secretMenu("", { 300, 300, 300, 50 }, red, Kind::menu, &secrets);
        const ForeignWindow menu("", { 700, 200, 50, 50 }, red, Kind::menu);
        QVERIFY(isMapped(below) && isMapped(secrets));
        secretMenu.raise();
        menu.raise();
        QWidget ours(nullptr, Qt::ToolTip);
        ours.setGeometry(150, 150, 200, 100);
        ours.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ours));

        m_apps[secrets.id()] = { .name = {}, .bundleIdentifier = vault };
        m_excluded = { vault };
        auto picture = captured();
        QCOMPARE(m_description, u"Captured the main display");
        QCOMPARE(picture.size(), QSize(1280, 800));
        QVERIFY(isColored(picture, QRect(120, 130, 300, 160), green));
        QVERIFY(isColored(picture, QRect(300, 300, 300, 50), black));
        QVERIFY(isColored(picture, QRect(560, 360, 300, 100), black));
        QVERIFY(isColored(picture, QRect(700, 200, 50, 50), red));

        m_excluded.clear();
        picture = captured();
        QVERIFY(isColored(picture, QRect(300, 300, 300, 50), red));
        QVERIFY(isColored(picture, QRect(560, 360, 300, 100), blue));
    }

private:
    static void compositors()
    {
        QTest::addColumn<bool>("hasCompositor");
        row("bare", false);
        row("under a compositor", true);
    }

    /// Keeps the windows off the screen and covers it with a window for their pictures.
    std::unique_ptr<xcb_connection_t, Disconnect> composite() const
    {
        auto* const server = xcb_connect(nullptr, nullptr);
        const auto root = m_x11->root();
        xcb_composite_query_version(server, 0, 4);
        xcb_composite_redirect_subwindows(server, root, XCB_COMPOSITE_REDIRECT_MANUAL);
        const X11Reply<xcb_composite_get_overlay_window_reply_t> overlay(
            xcb_composite_get_overlay_window_reply(
                server, xcb_composite_get_overlay_window(server, root), nullptr));
        return std::unique_ptr<xcb_connection_t, Disconnect>(server);
    }

    using Result = X11ScreenCapture::Result;

    std::optional<FrontmostApp> appOf(xcb_window_t window)
    {
        if (m_asked)
            m_asked();
        const auto app = m_apps.find(window);
        return app == m_apps.end() ? std::nullopt : std::optional(app->second);
    }

    Result capture() { return awaited(m_capture.captureForCurrentContext(m_excluded)); }

    QImage captured()
    {
        const auto result = capture();
        if (!result)
            return {};
        m_description = result->description;
        return QImage::fromData(result->jpegData);
    }

    /// A JPEG is sharp to the pixel only away from edges.
    static bool isColored(const QImage& picture, const QRect& part, QRgb color)
    {
        const auto inner = part.width() > 40 ? part.adjusted(16, 16, -16, -16) : part;
        for (int y = inner.top(); y <= inner.bottom(); ++y) {
            for (int x = inner.left(); x <= inner.right(); ++x) {
                const auto pixel = picture.pixel(x, y);
                const auto distance = qAbs(qRed(pixel) - qRed(color))
                    + qAbs(qGreen(pixel) - qGreen(color)) + qAbs(qBlue(pixel) - qBlue(color));
                if (distance > 24) {
                    qWarning("%x at %d, %d in place of %x", pixel, x, y, color);
                    return false;
                }
            }
        }
        return !picture.isNull();
    }

    bool isMapped(const ForeignWindow& window)
    {
        return QTest::qWaitFor([&] { return X11WindowTree::isOnScreen(*m_x11, window.id()); });
    }

    bool comesToFront(const ForeignWindow& window, const char* name)
    {
        m_apps[window.id()] = { .name = QLatin1String(name), .bundleIdentifier = {} };
        const std::vector expected { window.id() };
        return QTest::qWaitFor(
            [&] { return m_x11->values(m_x11->root(), "_NET_ACTIVE_WINDOW") == expected; });
    }

    std::unique_ptr<X11Connection> m_x11 = X11Connection::create();
    std::map<xcb_window_t, FrontmostApp> m_apps;
    std::function<void()> m_asked;
    std::set<QString> m_excluded;
    QString m_description;
    X11ScreenCapture m_capture { *m_x11, [this](xcb_window_t window) { return appOf(window); },
        { QStringLiteral("always.excluded") } };
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::X11ScreenCaptureTest)
#include "X11ScreenCaptureTest.moc"
