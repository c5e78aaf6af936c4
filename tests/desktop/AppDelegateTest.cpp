#include "PobblewigDesktop/AppDelegate.h"

#include "PobblewigDesktop/bubble/BubbleWindow.h"
#include "PobblewigDesktop/chat/ChatPanel.h"
#include "desktop/ScriptedParts.h"
#include "desktop/chat/PanelFixture.h"
#include "support/ScriptedProvider.h"
#include "support/TableRow.h"

#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace pobblewig {

using namespace Qt::StringLiterals;
using OpenChat = std::function<void(AppDelegate&)>;

class AppDelegateTest : public QObject {
    Q_OBJECT

    template <typename Window>
    static Window& shown()
    {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (auto* const window = qobject_cast<Window*>(widget); window && window->isVisible())
                return *window;
        }
        qFatal("There is no %s.", Window::staticMetaObject.className());
    }

    /// What the bubble says; empty if there is none.
    static QString said()
    {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (qobject_cast<BubbleWindow*>(widget) && widget->isVisible())
                return PanelFixture::find<QLabel>(*widget, "Bubble")->text();
        }
        return {};
    }

    void answer(const QString& text)
    {
        QTRY_VERIFY(m_model.isAsked());
        m_model.say(text);
        m_model.finish();
    }

    static void drop(QMimeData& data)
    {
        auto& buddy = shown<BuddyWindow>();
        QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&buddy, &enter);
        QDropEvent event({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        if (enter.isAccepted())
            QCoreApplication::sendEvent(&buddy, &event);
    }

    static BuddyState::Kind buddyState() { return shown<BuddyWindow>().view().state().kind; }

    void launch()
    {
        m_delegate.reset();
        m_delegate.emplace(m_windowSystem, *m_settings);
        QSignalSpy launched(&*m_delegate, &AppDelegate::launched);
        m_delegate->launch(
            [this] { return scriptedParts(m_scratch->path(), m_model, &m_librarian); });
        QVERIFY(launched.wait());
    }

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_settings.emplace(
            m_scratch->filePath(QStringLiteral("desktop.conf")), QSettings::IniFormat);
        launch();
    }
    void cleanup() { m_delegate.reset(); }

    void theReminderSignGoesOnceTheChatIsOpened_data()
    {
        QTest::addColumn<OpenChat>("open");
        row("from the tray",
            OpenChat([](AppDelegate& delegate) { Q_EMIT delegate.presence().chatRequested(); }));
        row("by the hot key",
            OpenChat([](AppDelegate& delegate) { Q_EMIT delegate.presence().chatToggled(); }));
        row("by a click on it",
            OpenChat([](AppDelegate&) { Q_EMIT shown<BuddyWindow>().clicked(); }));
    }
    void theReminderSignGoesOnceTheChatIsOpened()
    {
        QFETCH(OpenChat, open);
        const QSignalSpy looks(&m_delegate->presence(), &DesktopPresence::stateChanged);
        Q_EMIT m_delegate->presence().reminded(u"The essay is due."_s);
        QCOMPARE(buddyState(), BuddyState::Kind::notify);
        QCOMPARE(looks.count(), 1);
        open(*m_delegate);
        QVERIFY(shown<ChatPanel>().isVisible());
        QCOMPARE(buddyState(), BuddyState::Kind::idle);
        QCOMPARE(looks.count(), 2);
    }

    void anAnswerBehindAClosedChatIsSaidUntilItIsSeen_data()
    {
        using Act = std::function<void(BubbleWindow&)>;
        columns<Act, bool>("act", "isRead");
        const auto pull = [](BubbleWindow& bubble, int way) {
            const QPoint middle(20, 10);
            QTest::mousePress(&bubble, Qt::LeftButton, {}, middle);
            QTest::mouseRelease(&bubble, Qt::LeftButton, {}, middle + QPoint(way, 0));
        };
        row("a click", Act([=](auto& bubble) { pull(bubble, 0); }), true);
        row("a pull", Act([=](auto& bubble) { pull(bubble, -41); }), false);
        row("its button", Act([=](auto& bubble) {
            PanelFixture::find<QAbstractButton>(bubble, "Dismiss bubble")->click();
        }),
            false);
    }
    void anAnswerBehindAClosedChatIsSaidUntilItIsSeen()
    {
        QFETCH(std::function<void(BubbleWindow&)>, act);
        QFETCH(bool, isRead);
        m_delegate->openChat();
        auto& panel = shown<ChatPanel>();
        PanelFixture::find<QPlainTextEdit>(panel, "Message")->setPlainText(u"Hello"_s);
        PanelFixture::find<QAbstractButton>(panel, "Send")->click();
        panel.hide();
        answer(u"# **Hi** there\nMore."_s);
        QTRY_COMPARE(said(), u"Hi there"_s);
        QTRY_COMPARE(buddyState(), BuddyState::Kind::notify);
        auto& buddy = shown<BuddyWindow>();
        buddy.setHiddenFor(BuddyWindow::HidingReason::fullScreen, true);
        QTRY_COMPARE(said(), QString());
        buddy.setHiddenFor(BuddyWindow::HidingReason::fullScreen, false);
        QTRY_COMPARE(said(), u"Hi there"_s);
        buddy.move(300, 300);
        QVERIFY(!buddy.geometry().intersects(shown<BubbleWindow>().geometry()));
        act(shown<BubbleWindow>());
        QCOMPARE(said(), QString());
        QCOMPARE(panel.isVisible(), isRead);
        QCOMPARE(buddyState(), isRead ? BuddyState::Kind::idle : BuddyState::Kind::notify);
    }

    void aProblemBehindAClosedChatIsSaidUntilItIsSeen()
    {
        m_delegate->openChat();
        auto& panel = shown<ChatPanel>();
        PanelFixture::find<QPlainTextEdit>(panel, "Message")->setPlainText(u"Hello"_s);
        PanelFixture::find<QAbstractButton>(panel, "Send")->click();
        panel.hide();
        QTRY_VERIFY(m_model.isAsked());
        m_model.finish(TransportError { .kind = TransportError::Kind::refused });
        QTRY_COMPARE(said(), u"Nothing answers at 127.0.0.1 on this computer."_s);
        QCOMPARE(buddyState(), BuddyState::Kind::notify);
        Q_EMIT shown<BubbleWindow>().clicked();
        QCOMPARE(said(), QString());
        QCOMPARE(buddyState(), BuddyState::Kind::idle);
    }

    void whatIsDroppedOnTheBuddyIsAskedAbout_data()
    {
        columns<QString, bool, QString>("text", "isFile", "input");
        row("text", u"One\r\ntwo\u202e"_s, false, u"> One\n> two\n\n"_s);
        row("a file", u"/etc/passwd"_s, true, QString());
        row("a long text", QString(9000, u'a'), false, u"> "_s + QString(8000, u'a') + u"…\n\n"_s);
    }
    void whatIsDroppedOnTheBuddyIsAskedAbout()
    {
        QFETCH(QString, text);
        QFETCH(bool, isFile);
        QMimeData data;
        data.setText(text);
        if (isFile)
            data.setUrls({ QUrl::fromLocalFile(text) });
        drop(data);
        m_delegate->openChat();
        QTEST(PanelFixture::find<QPlainTextEdit>(shown<ChatPanel>(), "Message")->toPlainText(),
            "input");
    }

    void thePanelIsAsLargeAsItWasLeft()
    {
        const QSize size(512, 480);
        m_delegate->openChat();
        shown<ChatPanel>().resize(size);
        shown<ChatPanel>().hide();
        launch();
        m_delegate->openChat();
        QCOMPARE(shown<ChatPanel>().size(), size);
    }

    void aMemoryThatIsNotKeptIsToldOnceAndSeenAllTheTime()
    {
        m_delegate->openChat();
        auto& panel = shown<ChatPanel>();
        const auto text = [&panel](const char* name) {
            auto* const label = PanelFixture::find<QLabel>(panel, name);
            return label->isVisible() ? label->text() : QString();
        };
        PanelFixture::find<QPlainTextEdit>(panel, "Message")->setPlainText(u"Hello"_s);
        PanelFixture::find<QAbstractButton>(panel, "Send")->click();
        QTRY_VERIFY(m_model.isAsked());
        m_model.say(u"Hi"_s);
        m_model.finish();
        for (int request = 0; request < 8; ++request)
            m_librarian.enqueue(LLMError::http(404, u"model not found"_s));
        QTRY_COMPARE(text("State"), QString());
        Q_EMIT panel.newSessionRequested();
        QTRY_VERIFY(text("Notice").contains(u"model not found"));
        QTRY_VERIFY(text("State").contains(u"taking no notes"));
        panel.setNotice({});
        Q_EMIT panel.newSessionRequested();
        QTRY_VERIFY(text("State").contains(u"taking no notes"));
        QCOMPARE(text("Notice"), QString());
    }

private:
    PromptedProvider m_model;
    ScriptedProvider m_librarian;
    UnavailableBuddyWindowSystem m_windowSystem;
    std::optional<QTemporaryDir> m_scratch;
    std::optional<QSettings> m_settings;
    std::optional<AppDelegate> m_delegate;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::AppDelegateTest)
#include "AppDelegateTest.moc"
