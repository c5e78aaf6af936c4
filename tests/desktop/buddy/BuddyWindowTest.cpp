#include "PobblewigDesktop/buddy/BuddyWindow.h"

#include "PobblewigLinux/x11/X11BuddyWindowSystem.h"
#include "support/ForeignWindow.h"
#include "support/SelectionOwner.h"

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
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
        m_window = std::make_unique<BuddyWindow>(m_system, *m_settings, [this] { return now(); });
    }

    void cleanup() { m_window.reset(); }

    void whatIsDroppedIsReadOrAttached()
    {
        QStringList dropped;
        connect(m_window.get(), &BuddyWindow::textDropped, this,
            [&](const QString& text) { dropped.append(text); });
        connect(m_window.get(), &BuddyWindow::attachmentDropped, this,
            [&](const DropContents& contents) { dropped.append(contents.files[0].path()); });
        const auto drop = [this](const QList<QUrl>& places) {
            QMimeData data;
            data.setText(QStringLiteral("words"));
            data.setUrls(places);
            QDragEnterEvent enter({ 9, 9 }, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(m_window.get(), &enter);
            QDropEvent event({ 9, 9 }, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(m_window.get(), &event);
        };
        drop({});
        drop({ QUrl(QStringLiteral("https://a.org")) });
        drop({ QUrl(QStringLiteral("file:///notes.txt")) });
        QCOMPARE(dropped.size(), 3);
        QCOMPARE(dropped.first(), QStringLiteral("words"));
        QCOMPARE(dropped.last(), QStringLiteral("/notes.txt"));
    }

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
        QTRY_COMPARE(clicks.count(), isDrag ? 0 : 1);
        QCOMPARE(m_window->pos(), isDrag ? before - QPoint(distance, 0) : before);
    }

    void aDoubleClickPetsAndOpensNothing()
    {
        show();
        QSignalSpy clicks(m_window.get(), &BuddyWindow::clicked);
        const auto alone = m_window->height();
        const auto middle = m_window->rect().center();
        for (const auto type : { QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                 QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease })
            send(type, middle, m_window->mapToGlobal(middle));
        QTRY_VERIFY(m_window->height() > alone);
        QTRY_COMPARE(m_window->height(), alone);
        QCOMPARE(clicks.count(), 0);
    }

    void aThrowEndsWhereThePlaceIsKept()
    {
        show();
        drag({ -300, -200 }, Release::inMotion);
        const auto released = m_window->pos();
        const auto place = [this] { return m_settings->value(m_settings->allKeys().first()); };
        const auto first = place();
        QTRY_VERIFY(m_window->pos().x() < released.x() && m_window->pos().y() < released.y());
        QTRY_VERIFY(place() != first);
        const auto end = m_window->geometry();
        QCOMPARE(place().toPoint(), QPoint(end.left() + end.width() / 2, end.bottom() + 1));
        QVERIFY(m_window->screen()->geometry().contains(end));
    }

    void aPressEndsAThrowAndIsNoClick()
    {
        show();
        QSignalSpy clicks(m_window.get(), &BuddyWindow::clicked);
        drag({ -300, -200 }, Release::inMotion);
        const auto released = m_window->pos();
        QTRY_VERIFY(m_window->pos() != released);
        drag({});
        const auto caught = m_window->pos();
        m_skipped += 10;
        m_window->view().stir();
        QCOMPARE(m_window->pos(), caught);
        QVERIFY(!clicks.wait(QApplication::doubleClickInterval()));
    }

    void itGivesWayToAFullScreen()
    {
        show();
        std::optional<ForeignWindow> film(
            std::in_place, "film", QRect(100, 100, 500, 400), 0x203040);
        QTRY_VERIFY(isActive(film->id()));
        QVERIFY(m_window->isVisible());
        setFullScreen(film->id(), true);
        QTRY_VERIFY(!m_window->isVisible());
        {
            const ForeignWindow letter("letter", QRect(200, 200, 300, 200), 0x805030);
            QTRY_VERIFY(m_window->isVisible());
        }
        QTRY_VERIFY(!m_window->isVisible());

        QWidget chat;
        chat.setGeometry(300, 300, 200, 200);
        chat.show();
        QVERIFY(QTest::qWaitForWindowActive(&chat));
        QVERIFY(!m_window->isVisible());
        setFullScreen(film->id(), false);
        QTRY_VERIFY(m_window->isVisible());
        setFullScreen(film->id(), true);
        QTRY_VERIFY(!m_window->isVisible());
        film.reset();
        QTRY_VERIFY(m_window->isVisible());
    }

    void itComesBackWhenNoReasonIsLeft()
    {
        using Reason = BuddyWindow::HidingReason;
        m_window->setHiddenFor(Reason::sharedScreen, true);
        m_window->show();
        QVERIFY(!m_window->isVisible());
        m_window->setHiddenFor(Reason::fullScreen, true);
        m_window->setHiddenFor(Reason::sharedScreen, false);
        QVERIFY(!m_window->isVisible());
        m_window->setHiddenFor(Reason::fullScreen, false);
        QVERIFY(m_window->isVisible());
        m_window->hide();
        m_window->setHiddenFor(Reason::fullScreen, true);
        m_window->setHiddenFor(Reason::fullScreen, false);
        QVERIFY(!m_window->isVisible());
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

    void onlyAWindowOverAllOfItOrALockedScreenCoversIt()
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
        const ForeignWindow lock(
            "lock", QGuiApplication::primaryScreen()->geometry(), 0, ForeignWindow::Kind::menu);
        QTRY_VERIFY(m_system.isCovered(m_window->winId()));
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

    enum class Release { atRest, inMotion };

    void drag(QPoint by, Release release = Release::atRest)
    {
        const auto grip = m_window->rect().center();
        const auto from = m_window->mapToGlobal(grip);
        send(QEvent::MouseButtonPress, grip, from);
        m_skipped += 0.2;
        send(QEvent::MouseMove, grip, from + by);
        if (release == Release::atRest)
            m_skipped += 1;
        send(QEvent::MouseButtonRelease, grip, from + by);
    }

    void send(QEvent::Type type, QPoint at, QPoint globally)
    {
        const auto isMove = type == QEvent::MouseMove;
        const auto isRelease = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(at), QPointF(globally),
            isMove ? Qt::NoButton : Qt::LeftButton, isRelease ? Qt::NoButton : Qt::LeftButton, {});
        event.setTimestamp(quint64(now() * 1000));
        QCoreApplication::sendEvent(m_window.get(), &event);
    }

    double now() const
    {
        const auto time = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration<double>(time).count() + m_skipped;
    }

    bool isActive(xcb_window_t window)
    {
        return m_x11->values(m_x11->root(), "_NET_ACTIVE_WINDOW") == std::vector { window };
    }

    /// As any program asks for it.
    void setFullScreen(xcb_window_t window, bool isFullScreen)
    {
        xcb_client_message_event_t wish = {};
        wish.response_type = XCB_CLIENT_MESSAGE;
        wish.format = 32;
        wish.window = window;
        wish.type = m_x11->atom("_NET_WM_STATE");
        wish.data.data32[0] = isFullScreen ? 1 : 0;
        wish.data.data32[1] = m_x11->atom("_NET_WM_STATE_FULLSCREEN");
        xcb_send_event(m_x11->get(), false, m_x11->root(),
            XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
            reinterpret_cast<const char*>(&wish));
        xcb_flush(m_x11->get());
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

    /// Seconds that have passed beside the real ones.
    double m_skipped = 0;
    std::unique_ptr<X11Connection> m_x11 = X11Connection::create();
    X11BuddyWindowSystem m_system { *m_x11 };
    std::optional<QTemporaryDir> m_scratch;
    std::optional<QSettings> m_settings;
    std::unique_ptr<BuddyWindow> m_window;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::BuddyWindowTest)
#include "BuddyWindowTest.moc"
