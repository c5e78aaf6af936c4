#include "PobblewigDesktop/BuddyWindow.h"

#include "PobblewigLinux/X11BuddyWindowSystem.h"
#include "support/ForeignWindow.h"
#include "support/SelectionOwner.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <xcb/shape.h>

namespace pobblewig {

class BuddyWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(m_x11);
        m_scratch.emplace();
        m_settings.emplace(
            m_scratch->filePath(QStringLiteral("desktop.conf")), QSettings::IniFormat);
        m_window = std::make_unique<BuddyWindow>(m_system, *m_settings);
    }

    void cleanup() { m_window.reset(); }

    void aPressIsAClickUntilItHasMovedFarEnough_data()
    {
        const auto threshold = QApplication::startDragDistance();
        QTest::addColumn<int>("distance");
        QTest::addColumn<bool>("isDrag");
        QTest::newRow("still") << 0 << false;
        QTest::newRow("a trembling hand") << threshold << false;
        QTest::newRow("just a drag") << threshold + 1 << true;
    }
    void aPressIsAClickUntilItHasMovedFarEnough()
    {
        QFETCH(int, distance);
        QFETCH(bool, isDrag);
        const auto before = m_window->pos();
        QSignalSpy clicks(m_window.get(), &BuddyWindow::clicked);
        drag({ -distance, 0 });
        QCOMPARE(clicks.count(), isDrag ? 0 : 1);
        QCOMPARE(m_window->pos(), isDrag ? before - QPoint(distance, 0) : before);
    }

    void thePlaceIsKeptOverARestartAndAtAnySize()
    {
        show();
        drag({ -333, -200 });
        const auto place = m_window->geometry();
        m_window.reset();
        m_settings->sync();

        QSettings settings(m_settings->fileName(), QSettings::IniFormat);
        BuddyWindow next(m_system, settings);
        QCOMPARE(next.geometry(), place);
        next.setSizeScale(2.5);
        QVERIFY(next.width() > place.width());
        QCOMPARE(next.geometry().bottom(), place.bottom());
        QCOMPARE(next.geometry().center().x(), place.center().x());
    }

    void theFeetStayWhenTheBuddyNeedsRoom()
    {
        show();
        drag({ -200, -100 });
        const auto alone = m_window->geometry();
        const auto hasRoomAround = [&](bool isNeeded) {
            const auto now = m_window->geometry();
            return (now.height() > alone.height()) == isNeeded && now.bottom() == alone.bottom()
                && (now.left() + now.right()) == (alone.left() + alone.right());
        };
        m_window->view().setState(
            { BuddyState::Kind::notify, QStringLiteral("The lab report is due") });
        QTRY_VERIFY(hasRoomAround(true));
        QTRY_VERIFY(extent(XCB_SHAPE_SK_INPUT).height() > alone.height());
        m_window->view().setState({});
        QTRY_VERIFY(hasRoomAround(false));
        QCOMPARE(m_window->geometry(), alone);
    }

    void aPlaceThatCannotBeSeenIsNotUsed()
    {
        drag({ -100, 0 });
        const auto keys = m_settings->allKeys();
        QCOMPARE(keys.size(), 1);
        for (const QVariant& saved :
            { QVariant(QPoint(-5000, 99999)), QVariant(QStringLiteral("@Nonsense")) }) {
            m_settings->setValue(keys.first(), saved);
            const BuddyWindow next(m_system, *m_settings);
            QVERIFY(next.screen()->geometry().contains(next.geometry()));
        }
    }

    void theDesktopKeepsItWithTheUserAtEachShow()
    {
        for (int time = 0; time < 2; ++time) {
            show();
            for (const auto* state : { "ABOVE", "SKIP_TASKBAR", "SKIP_PAGER" })
                QTRY_VERIFY(hasState(state));
            QTRY_COMPARE(
                m_x11->values(id(), "_NET_WM_DESKTOP"), std::vector<std::uint32_t> { 0xFFFFFFFF });
            m_window->hide();
            QTRY_COMPARE(std::ranges::count(stack(), id()), 0);
        }
    }

    void aClickReachesTheBuddyOrWhatIsBehindIt()
    {
        QLineEdit behind;
        behind.setGeometry(300, 200, 400, 300);
        behind.show();
        QVERIFY(QTest::qWaitForWindowActive(&behind));
        show();
        drag(QPoint(400, 300) - m_window->pos());
        QSignalSpy clicks(m_window.get(), &BuddyWindow::clicked);

        click(m_window->geometry().center());
        QTRY_COMPARE(clicks.count(), 1);
        QVERIFY(behind.isActiveWindow());

        QSignalSpy selections(&behind, &QLineEdit::selectionChanged);
        behind.setText(QStringLiteral("text"));
        behind.selectAll();
        click(m_window->geometry().topLeft() + QPoint(3, 3));
        QTRY_COMPARE(selections.count(), 2);
        QCOMPARE(clicks.count(), 1);
    }

    void theWindowIsCutOnlyWhileNothingBlendsIt()
    {
        show();
        const auto window = QRect(QPoint(), m_window->size());
        QTRY_VERIFY(extent(XCB_SHAPE_SK_BOUNDING) != window);
        QVERIFY(window.contains(extent(XCB_SHAPE_SK_BOUNDING)));
        {
            const SelectionOwner compositor("_NET_WM_CM_S0");
            QTRY_COMPARE(extent(XCB_SHAPE_SK_BOUNDING), window);
            QVERIFY(extent(XCB_SHAPE_SK_INPUT) != window);
        }
        QTRY_VERIFY(extent(XCB_SHAPE_SK_BOUNDING) != window);
    }

    void onlyAnOpaqueWindowOverAllOfItCoversIt()
    {
        show();
        QWidget above(nullptr, Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint);
        above.setGeometry(m_window->geometry().adjusted(20, -20, 20, 20));
        above.show();
        QVERIFY(QTest::qWaitForWindowExposed(&above));
        above.raise();
        QTRY_COMPARE(stack(), std::vector({ id(), xcb_window_t(above.winId()) }));
        QVERIFY(!m_system.isCovered(m_window->winId()));
        above.setGeometry(m_window->geometry().adjusted(-20, -20, 20, 20));
        QTRY_VERIFY(m_system.isCovered(m_window->winId()));
        above.hide();
        QTRY_VERIFY(!m_system.isCovered(m_window->winId()));
    }

    void aLockedScreenCoversIt()
    {
        show();
        QVERIFY(!m_system.isCovered(m_window->winId()));
        {
            const ForeignWindow lock(
                "lock", QGuiApplication::primaryScreen()->geometry(), 0, ForeignWindow::Kind::menu);
            QTRY_VERIFY(m_system.isCovered(m_window->winId()));
        }
        QTRY_VERIFY(!m_system.isCovered(m_window->winId()));
    }

private:
    xcb_window_t id() const { return xcb_window_t(m_window->winId()); }

    void show()
    {
        const auto place = m_window->pos();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        QTRY_COMPARE(m_window->pos(), place);
    }

    void drag(QPoint by)
    {
        const auto grip = m_window->rect().center();
        const auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButtons buttons) {
            QMouseEvent event(type, QPointF(grip), QPointF(at),
                type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, {});
            QCoreApplication::sendEvent(m_window.get(), &event);
        };
        const auto from = m_window->mapToGlobal(grip);
        send(QEvent::MouseButtonPress, from, Qt::LeftButton);
        send(QEvent::MouseMove, from + by, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, from + by, Qt::NoButton);
    }

    /// As the user does it, with the X server to decide whose click it is.
    static void click(QPoint at)
    {
        const auto command = QStringLiteral("timeout 10 xdotool mousemove --sync %1 %2 click 1");
        auto words = command.arg(at.x()).arg(at.y()).split(u' ');
        QCOMPARE(QProcess::execute(words.takeFirst(), words), 0);
    }

    bool hasState(const std::string& state)
    {
        const auto states = m_x11->values(id(), "_NET_WM_STATE");
        return std::ranges::count(states, m_x11->atom("_NET_WM_STATE_" + state)) > 0;
    }

    std::vector<xcb_window_t> stack()
    {
        return m_x11->values(m_x11->root(), "_NET_CLIENT_LIST_STACKING");
    }

    QRect extent(xcb_shape_kind_t kind)
    {
        const X11Reply<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
            m_x11->get(), xcb_shape_get_rectangles(m_x11->get(), id(), kind), nullptr));
        QRect extent;
        const auto* rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
        for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
            const auto& part = rectangles[i];
            extent |= QRect(part.x, part.y, part.width, part.height);
        }
        return extent;
    }

    std::unique_ptr<X11Connection> m_x11 = X11Connection::create();
    X11BuddyWindowSystem m_system { *m_x11 };
    std::optional<QTemporaryDir> m_scratch;
    std::optional<QSettings> m_settings;
    std::unique_ptr<BuddyWindow> m_window;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::BuddyWindowTest)
#include "BuddyWindowTest.moc"
