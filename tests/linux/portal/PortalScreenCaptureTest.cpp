#include "PobblewigLinux/portal/PortalScreenCapture.h"

#include "PobblewigLinux/SessionPermissions.h"
#include "linux/portal/PortalAnswer.h"
#include "support/Awaited.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <QDBusContext>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QUrl>

namespace pobblewig {

/// A portal whose user answers at once with what was scripted, or never.
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Screenshot")

public:
    std::optional<uint> response;
    QString uri;
    QVariantMap asked;

public Q_SLOTS:
    QDBusObjectPath Screenshot(const QString&, const QVariantMap& options)
    {
        asked = options;
        return answerToRequest(
            connection(), message(), response, { { QStringLiteral("uri"), uri } });
    }
};

class Front : public FrontmostAppProviding {
public:
    std::optional<FrontmostApp> frontmostApp() override { return app; }
    double idleSeconds() override { return 0; }

    std::optional<FrontmostApp> app;
};

class PortalScreenCaptureTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_portal.emplace();
        m_front.app.reset();
        QVERIFY(m_bus.offer(service, "/org/freedesktop/portal/desktop", &*m_portal));
    }
    void cleanup() { m_bus.withdraw(service); }

    void theUserChoosesAndTheFileIsGone()
    {
        QImage screen(3000, 1500, QImage::Format_RGB32);
        screen.fill(Qt::red);
        QVERIFY(screen.save(file()));
        m_portal->response = 0;
        m_portal->uri = QUrl::fromLocalFile(file()).toString();
        const auto shot = capture();
        QVERIFY(shot);
        QCOMPARE(QImage::fromData(shot->jpegData).size(), QSize(1568, 784));
        QVERIFY(!QFile::exists(file()));
        QCOMPARE(m_portal->asked.value(QStringLiteral("interactive")), QVariant(true));
    }

    void whatGoesWrongIsSaid_data()
    {
        using Kind = ScreenCaptureError::Kind;
        QTest::addColumn<int>("response");
        QTest::addColumn<QString>("uri");
        QTest::addColumn<Kind>("kind");
        row("refused", 1, "", Kind::permissionDenied);
        row("forbidden", 2, "", Kind::permissionDenied);
        row("no file", 0, "file:///nonexistent/shot.png", Kind::noCaptureTarget);
        row("not a file", 0, "https://example.org/shot.png", Kind::noCaptureTarget);
        row("no answer", -1, "", Kind::noCaptureTarget);
    }
    void whatGoesWrongIsSaid()
    {
        QFETCH(int, response);
        if (response >= 0)
            m_portal->response = response;
        QFETCH(QString, uri);
        m_portal->uri = uri;
        QFETCH(ScreenCaptureError::Kind, kind);
        QVERIFY(capture().error() == ScreenCaptureError { kind });
    }

    void withoutAPortalNothingIsGranted()
    {
        using Session = SessionPermissions::Session;
        SessionPermissions wayland(Session::wayland, m_bus.connection("program"));
        QTRY_VERIFY(wayland.screenCaptureGranted());
        cleanup();
        QVERIFY(capture().error().kind == ScreenCaptureError::Kind::noCaptureTarget);
        SessionPermissions none(Session::wayland, m_bus.connection("program"));
        QVERIFY(!awaited(none.requestScreenCapture()) && !none.accessibilityGranted());
        SessionPermissions x11(Session::x11, m_bus.connection("program"));
        QVERIFY(x11.screenCaptureGranted() && x11.accessibilityGranted());
    }

    void anExcludedAppThatIsKnownToBeInFrontIsRefused()
    {
        m_front.app = { QStringLiteral("Vault"), QStringLiteral("org.example.Vault") };
        const ScreenCaptureError expected { ScreenCaptureError::Kind::excludedApp,
            QStringLiteral("Vault") };
        QVERIFY(capture().error() == expected);
        QVERIFY(m_portal->asked.isEmpty());
    }

private:
    QString file() const { return m_scratch->filePath(QStringLiteral("shot.png")); }

    PortalScreenCapture::Result capture()
    {
        using namespace std::chrono_literals;
        const auto patience = m_portal->response ? 20s : 0s;
        PortalScreenCapture capture(m_bus.connection("program"), m_front,
            { QStringLiteral("org.example.Vault") }, patience);
        return awaited(capture.captureForCurrentContext({}));
    }

    static constexpr auto service = "org.freedesktop.portal.Desktop";
    PrivateBus m_bus;
    std::optional<QTemporaryDir> m_scratch;
    std::optional<FakePortal> m_portal;
    Front m_front;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PortalScreenCaptureTest)
#include "PortalScreenCaptureTest.moc"
