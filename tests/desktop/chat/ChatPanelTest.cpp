#include "PobblewigDesktop/chat/ChatPanel.h"

#include "desktop/chat/ScriptedChat.h"
#include "prompts/VisionUserPrompt.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

using namespace std::chrono_literals;

class ChatPanelTest : public QObject {
    Q_OBJECT

    template <typename Widget>
    Widget& named(const char* name) const
    {
        for (auto* const widget : m_panel->findChildren<Widget*>()) {
            if (widget->accessibleName() == QLatin1String(name))
                return *widget;
        }
        qFatal("There is no control of the name %s.", name);
    }
    QAbstractButton& button(const char* name) const { return named<QAbstractButton>(name); }
    QLabel& label(const char* name) const { return named<QLabel>(name); }

    QPlainTextEdit& input() const { return named<QPlainTextEdit>("Message"); }

    /// As those who hear the conversation get it.
    QStringList spoken() const
    {
        auto& view = named<QAbstractItemView>("Conversation");
        auto* const list = QAccessible::queryAccessibleInterface(&view);
        QStringList result;
        for (auto number = 0; number < list->childCount(); ++number)
            result.append(list->child(number)->text(QAccessible::Name));
        // Without an assistive technology nothing tells the interface that rows come and go.
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(list));
        return result;
    }

    void ask(const QString& text)
    {
        input().setPlainText(text);
        QTest::keyClick(&input(), Qt::Key_Return);
        QTRY_VERIFY(m_talk->model.isAsked());
    }

private Q_SLOTS:
    void init()
    {
        m_talk = std::make_unique<ScriptedChat>();
        m_panel = std::make_unique<ChatPanel>(m_talk->chat,
            Calendar { QTimeZone::utc(), QLocale(QStringLiteral("en_GB")) },
            [] { return ScriptedChat::now; });
        m_panel->show();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    }
    void cleanup()
    {
        m_panel.reset();
        m_talk.reset();
    }

    void whatWasWrittenBeforeAStopStaysUntilTheNextTurn()
    {
        ask(QStringLiteral("Hello"));
        QVERIFY(input().toPlainText().isEmpty());
        QVERIFY(!button("Send").isVisible());
        QCOMPARE(label("State").text(), QStringLiteral("thinking…"));
        m_talk->model.say(QStringLiteral("Half a"));
        QTRY_COMPARE(spoken().last(), QStringLiteral("Pobblewig is writing: Half a"));
        button("Stop").click();
        QCOMPARE(spoken().last(), QStringLiteral("Pobblewig, unfinished: Half a"));
        QVERIFY(button("Send").isVisible() && !label("Error").isVisible());
        ask(QStringLiteral("Again"));
        QTRY_COMPARE(spoken().last(), QStringLiteral("Pobblewig is writing: "));
        QVERIFY(!spoken().join(u'\n').contains(QStringLiteral("Half a")));
    }

    void anErrorIsSaidAndTheTurnCanBeTriedAgain()
    {
        // What a message says is never taken for a sentence to fill in.
        ask(QStringLiteral("Hello %1"));
        m_talk->model.finish(TransportError { .text = QStringLiteral("No answer.") });
        QTRY_VERIFY(label("Error").isVisible());
        QCOMPARE(label("Error").text(), *m_talk->chat.lastError());
        QCOMPARE(label("Error").accessibleDescription(), label("Error").text());
        QTRY_VERIFY(button("Retry").isEnabled());
        button("Retry").click();
        QTRY_VERIFY(m_talk->model.isAsked() && !label("Error").isVisible());
        m_talk->model.say(QStringLiteral("Hi"));
        m_talk->model.finish();
        const QStringList expected { QStringLiteral("Today"),
            QStringLiteral("You, 08:15: Hello %1"), QStringLiteral("Pobblewig, 08:15: Hi") };
        QTRY_COMPARE(spoken(), expected);
    }

    void whatCouldNotBeSentIsGivenBack()
    {
        m_talk->models.main = nullptr;
        input().setPlainText(QStringLiteral("Precious words"));
        button("Send").click();
        QTRY_VERIFY(label("Error").isVisible());
        QTRY_COMPARE(input().toPlainText(), QStringLiteral("Precious words"));
    }

    void aLookAtTheScreenIsAskedForAndShown()
    {
        const auto look = [this] { button("Look at my screen").click(); };
        // A canned question is not what somebody wrote.
        m_talk->screen.enqueue(tl::unexpected(
            ScreenCaptureError { ScreenCaptureError::Kind::excludedApp, QStringLiteral("Vault") }));
        look();
        QTRY_VERIFY(label("Error").isVisible());
        QVERIFY(input().toPlainText().isEmpty());

        const auto captured = QStringLiteral("Captured \"Draft\" of Writer");
        for (const auto& written : { QString(), QStringLiteral("What is this?") }) {
            m_talk->screen.enqueue(CapturedScreenshot { "JPEG", captured });
            input().setPlainText(written);
            look();
            QTRY_VERIFY(m_talk->model.isAsked());
            QVERIFY(label("Captured").isVisible());
            QCOMPARE(label("Captured").accessibleDescription(), captured);
            QVERIFY(!button("Look at my screen").isEnabled());
            m_talk->model.say(QStringLiteral("A draft."));
            m_talk->model.finish();
            QTRY_VERIFY(m_talk->chat.canRetry());
            QVERIFY(!label("Captured").isVisible() && input().toPlainText().isEmpty());
        }
        const auto said = QStringLiteral("You, 08:15, with a picture of the screen: %1");
        QCOMPARE(spoken().at(1), said.arg(Prompts::visionUserPrompt));
        QCOMPARE(spoken().at(3), said.arg(QStringLiteral("What is this?")));
    }

    void enterSendsAndShiftEnterBreaksTheLine()
    {
        QTest::keyClicks(&input(), QStringLiteral("one"));
        QTest::keyClick(&input(), Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(&input(), QStringLiteral("two"));
        QTest::keyClick(&input(), Qt::Key_Return);
        QTRY_COMPARE(spoken().value(1), QStringLiteral("You, 08:15: one\ntwo"));
        // A second message waits in the field while the first is answered.
        input().setPlainText(QStringLiteral("three"));
        QTest::keyClick(&input(), Qt::Key_Return);
        QCOMPARE(input().toPlainText(), QStringLiteral("three"));
    }

    void aSessionIsClosedQuietly()
    {
        m_panel->setStateText(QStringLiteral("studying"));
        m_panel->setClosingSession(true);
        QCOMPARE(label("State").text(), QStringLiteral("Summing up the day…"));
        QVERIFY(!button("New session").isEnabled());
        QSignalSpy requests(m_panel.get(), &ChatPanel::newSessionRequested);
        QTest::keyClick(m_panel.get(), Qt::Key_N, Qt::ControlModifier);
        QVERIFY(requests.isEmpty());
        ask(QStringLiteral("Hello"));
        QCOMPARE(label("State").text(), QStringLiteral("thinking…"));
        m_panel->setClosingSession(false);
        m_talk->model.say(QStringLiteral("Hi"));
        m_talk->model.finish();
        QTRY_COMPARE(label("State").text(), QStringLiteral("studying"));
        QTest::keyClick(m_panel.get(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(requests.size(), 1);
    }

    void nothingBlankIsSent()
    {
        for (const auto& blank : { QString(), QStringLiteral(" \n ") }) {
            input().setPlainText(blank);
            QVERIFY(!button("Send").isEnabled());
            QTest::keyClick(&input(), Qt::Key_Return);
            QCOMPARE(input().toPlainText(), blank);
        }
    }

    void theInputGrowsToSixLines()
    {
        const auto one = input().height();
        input().setPlainText(QStringLiteral("1\n2\n3\n4\n5\n6"));
        const auto six = input().height();
        QVERIFY(six > one + 4 * input().fontMetrics().lineSpacing());
        input().setPlainText(QStringLiteral("1\n2\n3\n4\n5\n6\n7\n8"));
        QCOMPARE(input().height(), six);
        input().clear();
        QCOMPARE(input().height(), one);
    }

    void escapeClosesFindAndThenThePanel()
    {
        m_talk->exchange(QStringLiteral("tea or TEA"), QStringLiteral("Tea"));
        QTest::keyClick(m_panel.get(), Qt::Key_F, Qt::ControlModifier);
        auto& field = named<QLineEdit>("Find");
        QVERIFY(field.isVisible());
        QTest::keyClicks(&field, QStringLiteral("tea"));
        QCOMPARE(label("Matches").text(), QStringLiteral("3 of 3"));
        QTest::keyClick(&field, Qt::Key_Return);
        QCOMPARE(label("Matches").text(), QStringLiteral("1 of 3"));
        button("Previous match").click();
        QCOMPARE(label("Matches").text(), QStringLiteral("3 of 3"));
        m_talk->add(ChatMessage::Role::user, QStringLiteral("More tea"));
        QCOMPARE(label("Matches").text(), QStringLiteral("3 of 4"));
        QTest::keyClicks(&field, QStringLiteral("pot"));
        QCOMPARE(label("Matches").text(), QStringLiteral("No matches"));
        QTest::keyClick(m_panel.get(), Qt::Key_Escape);
        QVERIFY(!field.isVisible() && m_panel->isVisible());
        QTest::keyClick(m_panel.get(), Qt::Key_Escape);
        QVERIFY(!m_panel->isVisible());
    }

    void theConversationIsSavedAsText()
    {
        const QTemporaryDir folder;
        m_talk->add(ChatMessage::Role::user, QStringLiteral("Hi %1"), ScriptedChat::now - 24h);
        m_talk->add(ChatMessage::Role::assistant, QStringLiteral("Hello\nyou"));
        QTest::keyClick(m_panel.get(), Qt::Key_S, Qt::ControlModifier);
        auto* const dialog = m_panel->findChild<QFileDialog*>();
        QVERIFY(dialog);
        const auto path = folder.filePath(QStringLiteral("talk.txt"));
        Q_EMIT dialog->fileSelected(path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(),
            "Saturday, 28 February 2026\n\nYou, 08:15\nHi %1\n\n"
            "Sunday, 1 March 2026\n\nPobblewig, 08:15\nHello\nyou\n\n");
        Q_EMIT dialog->fileSelected(folder.filePath(QStringLiteral("talk.txt/inside.txt")));
        QVERIFY(label("Notice").isVisible());
    }

    void everyControlHasAName()
    {
        for (auto* const control : m_panel->findChildren<QWidget*>()) {
            if (control->focusPolicy() & Qt::TabFocus && control->isVisibleTo(m_panel.get()))
                QVERIFY2(!control->accessibleName().isEmpty(), control->metaObject()->className());
        }
    }

private:
    std::unique_ptr<ScriptedChat> m_talk;
    std::unique_ptr<ChatPanel> m_panel;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ChatPanelTest)
#include "ChatPanelTest.moc"
