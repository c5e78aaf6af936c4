#include "PobblewigDesktop/chat/ChatHeader.h"
#include "PobblewigDesktop/chat/ConversationView.h"
#include "PobblewigDesktop/controls/PanelKeys.h"
#include "desktop/chat/PanelFixture.h"
#include "prompts/VisionUserPrompt.h"
#include "support/TableRow.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace pobblewig {

using namespace std::chrono_literals;

namespace {

struct LayoutCount : QObject {
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::LayoutRequest ? 1 : 0;
        return false;
    }
    int count = 0;
};

} // namespace

class ChatPanelTest : public QObject {
    Q_OBJECT

    QAbstractButton& button(const char* name) const { return m->button(name); }
    QLabel& label(const char* name) const { return m->label(name); }
    QPlainTextEdit& input() const { return m->input(); }

    /// As those who hear the conversation get it.
    QStringList spoken() const
    {
        auto& view = m->named<QAbstractItemView>("Conversation");
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
        QTRY_VERIFY(m->talk.model.isAsked());
    }

private Q_SLOTS:
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void whatIsComingUpOpensByTheButtonTheKeysAndTheQuestion()
    {
        QSignalSpy links(&m->panel, &ChatPanel::linkRequested);
        button("Coming up").click();
        QTest::keySequence(&m->panel, PanelKeys::sequence(PanelKeys::Act::comingUp));
        ask(u"What's due?"_s);
        QCOMPARE(m->talk.chat.messages().back().text, u"What's due?"_s);
        QCOMPARE(links.count(), 3);
        for (const auto& link : links)
            QCOMPARE(link.value(0).toString(), u"pobblewig:coming-up"_s);
    }

    void theNewestMessageOfTheCompanionCanBeAnsweredAtOnce()
    {
        const QSignalSpy answered(&m->panel, &ChatPanel::quickAnswered);
        InterventionRecord record { .id = QUuid::createUuid() };
        m->panel.setInterventions({ record });
        QVERIFY(!PanelFixture::find<QAbstractButton>(m->panel, "Not now"));
        m->talk.chat.say(u"The essay is due."_s, record.id);
        auto& wrong = button("That's wrong");
        wrong.setFocus();
        QTest::keyClick(&wrong, Qt::Key_Space);
        QCOMPARE(answered.value(0).value(0).toUuid(), record.id);
        for (const auto width : { 300, 400, 900 }) {
            m->panel.resize(width, 600);
            QTRY_COMPARE(m->panel.width(), width);
            QVERIFY(
                button("Remind me later").width() >= button("Remind me later").sizeHint().width());
        }
        record.outcome = InterventionOutcome::contextCorrected;
        m->panel.setInterventions({ record });
        QVERIFY(!wrong.isVisible() && input().hasFocus());
        record.outcome.reset();
        m->panel.setInterventions({ record });
        QTRY_VERIFY(button("Got it").isVisible());
        ask(u"Thanks"_s);
        QVERIFY(!PanelFixture::find<QWidget>(m->panel, "Got it")->isVisible());
    }

    void aThemeReachesEverythingThatIsShown()
    {
        for (const auto scheme : { ColorScheme::dark, ColorScheme::light, ColorScheme::dark }) {
            const auto palette = Theme::palette(scheme, {});
            m->panel.setTheme(palette);
            const auto picture = m->panel.grab().toImage();
            const auto above = [&](const QWidget& widget, QPoint inside) {
                return picture.pixelColor(widget.mapTo(&m->panel, inside));
            };
            QCOMPARE(above(*m->panel.findChild<ChatHeader*>(), { 3, 3 }), palette.window);
            QCOMPARE(above(*m->panel.findChild<ConversationView*>(), { 2, 40 }), palette.window);
            QCOMPARE(above(input(), { input().width() / 2, 6 }), palette.surface);
        }
    }

    void whatWasWrittenBeforeAStopStays()
    {
        ask(QStringLiteral("Hello"));
        QVERIFY(input().toPlainText().isEmpty());
        QVERIFY(!button("Send").isVisible());
        QCOMPARE(label("State").text(), QStringLiteral("thinking…"));
        m->talk.model.say(QStringLiteral("Half a"));
        QTRY_COMPARE(spoken().last(), QStringLiteral("Pobblewig is writing: Half a"));
        button("Stop").click();
        QCOMPARE(spoken().last(), QStringLiteral("Pobblewig, 08:15, stopped: Half a"));
        QVERIFY(button("Send").isVisible() && !label("Error").isVisible());
        button("Continue").click();
        QTRY_COMPARE(spoken().last(), QStringLiteral("Pobblewig is writing: "));
        QCOMPARE(spoken().at(2), QStringLiteral("Pobblewig, 08:15, stopped: Half a"));
    }

    void whatWasBegunIsThereAfterALaunch()
    {
        input().setPlainText(QStringLiteral("Precious\nwords"));
        m->panel.hide();
        QCOMPARE(DraftStore(m->scratch).text(), QStringLiteral("Precious\nwords"));
        ChatPanel next(m->talk.chat, Calendar(), [] { return ScriptedChat::now; });
        auto* const field = m->find<QPlainTextEdit>(next, "Message");
        QCOMPARE(field->toPlainText(), QStringLiteral("Precious\nwords"));
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(!m->scratch.names().contains(QStringLiteral("draft.json")));
    }

    void anErrorIsSaidAndTheTurnCanBeTriedAgain()
    {
        // What a message says is never taken for a sentence to fill in.
        ask(QStringLiteral("Hello %1"));
        m->talk.model.finish(TransportError { .text = QStringLiteral("No answer.") });
        QTRY_VERIFY(label("Error").isVisible());
        QCOMPARE(label("Error").text(), QStringLiteral("127.0.0.1 cannot be reached."));
        QCOMPARE(label("Error").accessibleDescription(), label("Error").text());
        QTRY_COMPARE(spoken().last(), QStringLiteral("You, 08:15, not answered: Hello %1"));
        QTRY_VERIFY(button("Retry").isEnabled());
        button("Retry").click();
        QTRY_VERIFY(m->talk.model.isAsked() && !label("Error").isVisible());
        m->talk.model.say(QStringLiteral("Hi"));
        m->talk.model.finish();
        const QStringList expected { QStringLiteral("Today"),
            QStringLiteral("You, 08:15: Hello %1"), QStringLiteral("Pobblewig, 08:15: Hi") };
        QTRY_COMPARE(spoken(), expected);
    }

    void aReplyThatBreaksOffIsContinued()
    {
        ask(QStringLiteral("Hello"));
        m->talk.model.say(QStringLiteral("Half a"));
        m->talk.model.finish(TransportError { .text = QStringLiteral("No answer.") });
        QTRY_VERIFY(button("Continue").isVisible() && label("Error").isVisible());
        QVERIFY(!m->find<QAbstractButton>(m->panel, "Retry"));
        QCOMPARE(spoken().last(), QStringLiteral("Pobblewig, 08:15, cut off: Half a"));
        button("Continue").click();
        QTRY_VERIFY(m->talk.model.isAsked() && !label("Cut off").isVisible());
    }

    void aConversationThatIsTooLongNeedsANewSession()
    {
        ask(QStringLiteral("Hello"));
        m->talk.model.finish(LLMError::http(400, QStringLiteral("exceed_context_size_error")));
        QTRY_VERIFY(label("Error").isVisible());
        auto* const banner = label("Error").parentWidget();
        m->find<QAbstractButton>(*banner, "New session")->click();
        QVERIFY(label("New session").isVisible());
        m->talk.history.clear();
        m->talk.chat.reload();
        QVERIFY(!label("Error").isVisible());
    }

    void aModelThatIsLoadingIsMentioned()
    {
        ask(QStringLiteral("Hello"));
        m->talk.model.finish(LLMError::http(503, QStringLiteral("Loading model")));
        QTRY_VERIFY(label("Hint").isVisible());
        QCOMPARE(label("Hint").text(), m->talk.chat.notice().value_or(QString()));
        button("Stop").click();
        QVERIFY(!label("Hint").isVisible());
    }

    void whatCouldNotBeSentIsGivenBack()
    {
        m->talk.models.main = nullptr;
        input().setPlainText(QStringLiteral("Precious words"));
        button("Send").click();
        QTRY_VERIFY(label("Error").isVisible());
        QTRY_COMPARE(input().toPlainText(), QStringLiteral("Precious words"));
    }

    void aTurnCanBeStoppedFromItsBeginningToItsEnd()
    {
        button("Look at my screen").click();
        QVERIFY(button("Stop").isVisible() && !button("Send").isVisible());
        button("Stop").click();
        QVERIFY(button("Send").isVisible() && !m->talk.chat.isInTurn());
        button("Look at my screen").click();
        QVERIFY(label("Notice").text().contains(QStringLiteral("still being taken")));
        m->talk.screen.enqueue(CapturedScreenshot());
        QTRY_VERIFY(m->talk.chat.canRetry());
    }

    void aLongErrorLeavesItsButtonReadable()
    {
        m->panel.resize(m->panel.minimumSize());
        ask(QStringLiteral("Hello"));
        const auto text = QString(600, u'x') + QStringLiteral(" y").repeated(500);
        m->talk.model.finish(TransportError { .text = text });
        QTRY_VERIFY(label("Error").isVisible());
        auto& details = m->ofError<QPlainTextEdit>("Details");
        QVERIFY(!details.isVisible());
        m->ofError<QAbstractButton>("Details").click();
        QCOMPARE(details.toPlainText(), text);
        // A word as long as the longest of other languages.
        button("Retry").setText(QStringLiteral("Verbindungseinstellungen"));
        m->panel.resize(301, 320);
        for (const auto* const name : { "Retry", "Hide details", "Copy" }) {
            auto* const shown = &m->ofError<QAbstractButton>(name);
            QTRY_VERIFY(shown->width() >= shown->sizeHint().width());
            const QRect place(shown->mapTo(&m->panel, QPoint()), shown->size());
            QTRY_VERIFY(m->panel.rect().contains(place));
        }
        m->ofError<QAbstractButton>("Copy").click();
        QCOMPARE(QGuiApplication::clipboard()->text(), text);
    }

    void aModelIsChosenFromThoseThatAreThere()
    {
        m->talk.model.offered = { QStringLiteral("owl & co"), QStringLiteral("emu") };
        ask(QStringLiteral("Hello"));
        m->talk.model.finish(LLMError::http(404, QStringLiteral("unknown model")));
        QTRY_VERIFY(m->find<QAbstractButton>(m->panel, "Choose a model"));
        auto* const menu = m->named<QPushButton>("Choose a model").menu();
        QCOMPARE(menu->actions().front()->text(), QStringLiteral("owl && co"));
        menu->actions().front()->trigger();
        QTRY_VERIFY(m->talk.model.isAsked());
        QCOMPARE(m->talk.models.chosen[ModelUse::main], QStringLiteral("owl & co"));
    }

    void aServerThatAsksToWaitIsAskedAgainByItself()
    {
        auto busy = LLMError::http(429, {});
        busy.retryAfter = "12";
        ask(QStringLiteral("Hello"));
        m->talk.model.finish(busy);
        QTRY_COMPARE(
            m->ofError<QLabel>("Advice").text(), QStringLiteral("Pobblewig asks again in 12 s."));
        m->talk.time += 12s;
        QTRY_VERIFY(m->talk.model.isAsked() && !label("Error").isVisible());
        m->talk.model.finish(busy);
        QTRY_VERIFY(label("Error").isVisible());
        input().setPlainText(QStringLiteral("Wait"));
        m->talk.time += 12s;
        QTRY_COMPARE(
            m->ofError<QLabel>("Advice").text(), QStringLiteral("It can be asked again now."));
        QVERIFY(!m->talk.chat.isInTurn());
    }

    void aWaitIsCountedWithoutMovingAnything()
    {
        ask(QStringLiteral("Hello"));
        m->talk.time += 12s;
        QTRY_COMPARE(label("State").text(), QStringLiteral("waiting for 127.0.0.1, 12 s"));
        QCoreApplication::processEvents();
        LayoutCount layouts;
        m->panel.installEventFilter(&layouts);
        m->talk.time += 1s;
        QTRY_COMPARE(label("State").text(), QStringLiteral("waiting for 127.0.0.1, 13 s"));
        QCOMPARE(layouts.count, 0);
        m->talk.model.say(QStringLiteral("Hi"));
        QTRY_COMPARE(label("State").text(), QStringLiteral("thinking…"));
    }

    void thoughtsAreOpenedByEnterAndLeaveWithThePanel()
    {
        ask(QStringLiteral("Hello"));
        m->talk.model.think(QStringLiteral("Hm"));
        QTRY_VERIFY(m->find<QAbstractButton>(m->panel, "Thinking, 0 s"));
        auto& row = button("Thinking, 0 s");
        auto& thoughts = m->named<QPlainTextEdit>("Thoughts");
        QVERIFY(row.isVisible() && !thoughts.isVisible());
        QTest::keyClick(&row, Qt::Key_Return);
        QVERIFY(thoughts.isVisible());
        m->talk.model.think(QStringLiteral("m"));
        QTRY_COMPARE(thoughts.toPlainText(), QStringLiteral("Hmm"));
        m->talk.time += 14s;
        m->talk.model.say(QStringLiteral("Hi"));
        QTRY_COMPARE(row.text(), QStringLiteral("Thought for 14 s"));
        m->panel.hide();
        QVERIFY(row.parentWidget()->isHidden() && thoughts.toPlainText().isEmpty());
    }

    void aLookAtTheScreenIsAskedForAndShown()
    {
        const auto look = [this] { button("Look at my screen").click(); };
        // A canned question is not what somebody wrote.
        m->talk.screen.enqueue(tl::unexpected(
            ScreenCaptureError { ScreenCaptureError::Kind::excludedApp, QStringLiteral("Vault") }));
        look();
        QTRY_VERIFY(label("Error").isVisible());
        QVERIFY(input().toPlainText().isEmpty());

        const auto captured = QStringLiteral("Captured \"Draft\" of Writer");
        for (const auto& written : { QString(), QStringLiteral("What is this?") }) {
            m->talk.screen.enqueue(CapturedScreenshot { "JPEG", captured });
            input().setPlainText(written);
            look();
            QTRY_VERIFY(m->talk.model.isAsked());
            QVERIFY(label("Captured").isVisible());
            QCOMPARE(label("Captured").accessibleDescription(), captured);
            QVERIFY(!button("Look at my screen").isEnabled());
            m->talk.model.say(QStringLiteral("A draft."));
            m->talk.model.finish();
            QTRY_VERIFY(m->talk.chat.canRetry());
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
    }

    void whatIsSentDuringATurnComesNext_data()
    {
        columns<QString, QString>("end", "written");
        row("answered", "answer", "");
        row("failed", "fail", "three\n\nfour\n\nand");
        row("stopped", "stop", "three\n\nfour\n\nand");
        row("taken back", "cross", "three\n\nfour\n\nand");
    }
    void whatIsSentDuringATurnComesNext()
    {
        QFETCH(QString, end);
        ask(QStringLiteral("one"));
        for (const auto* const text : { "three", "four" }) {
            input().setPlainText(QString::fromLatin1(text));
            QTest::keyClick(&input(), Qt::Key_Return);
        }
        QCOMPARE(label("Next message").text(), QStringLiteral("Next: three four"));
        m->panel.keepDraft();
        QCOMPARE(m->talk.chat.draft(), QStringLiteral("three\n\nfour"));
        if (end != u"answer")
            input().setPlainText(QStringLiteral("and"));
        if (end == u"stop")
            button("Stop").click();
        else if (end == u"cross")
            button("Do not send").click();
        else
            m->talk.model.say(QStringLiteral("Hi"));
        if (end == u"fail")
            m->talk.model.finish(TransportError { .text = QStringLiteral("No answer.") });
        else if (end == u"answer")
            m->talk.model.finish();
        QTRY_VERIFY(!label("Next message").isVisible());
        QTEST(input().toPlainText(), "written");
        QTRY_COMPARE(
            spoken().contains(QStringLiteral("You, 08:15: three\n\nfour")), end == u"answer");
        QCOMPARE(m->talk.chat.draft(), end == u"answer" ? QString() : input().toPlainText());
    }

    void upBringsTheLastMessageBack()
    {
        QTest::keyClick(&input(), Qt::Key_Up);
        QVERIFY(input().toPlainText().isEmpty());
        m->talk.exchange(QStringLiteral("tae"), QStringLiteral("What?"));
        QTest::keyClick(&input(), Qt::Key_Up);
        QCOMPARE(input().toPlainText(), QStringLiteral("tae"));
        QVERIFY(label("Editing").isVisible() && !button("Look at my screen").isEnabled());
        m->panel.keepDraft();
        QCOMPARE(m->talk.chat.draft(), QString());
        QTest::keyClick(&m->panel, Qt::Key_Escape);
        QVERIFY(input().toPlainText().isEmpty() && !label("Editing").isVisible());
        QTest::keyClick(&input(), Qt::Key_Up);
        ask(QStringLiteral("tea"));
        QCOMPARE(spoken().mid(1, 1), QStringList(QStringLiteral("You, 08:15: tea")));
        m->talk.model.finish(TransportError { .text = QStringLiteral("No answer.") });
        QTRY_COMPARE(spoken().last(), QStringLiteral("You, 08:15, not answered: tea"));
        // What the question was becomes a message of its own once it is gone.
        QTest::keyClick(&input(), Qt::Key_Up);
        input().setPlainText(QStringLiteral("coffee"));
        m->talk.history.clear();
        m->talk.chat.reload();
        QVERIFY(!label("Editing").isVisible() && m->panel.isVisible());
        QCOMPARE(input().toPlainText(), QStringLiteral("coffee"));
    }

    void aSessionIsClosedQuietly()
    {
        m->panel.setStateText(QStringLiteral("studying"));
        m->panel.setClosingSession(true);
        QCOMPARE(label("State").text(), QStringLiteral("Summing up the day…"));
        QVERIFY(!button("New session").isEnabled());
        QSignalSpy requests(&m->panel, &ChatPanel::newSessionRequested);
        QTest::keyClick(&m->panel, Qt::Key_N, Qt::ControlModifier);
        QVERIFY(requests.isEmpty());
        ask(QStringLiteral("Hello"));
        QCOMPARE(label("State").text(), QStringLiteral("thinking…"));
        m->panel.setClosingSession(false);
        m->talk.model.say(QStringLiteral("Hi"));
        m->talk.model.finish();
        QTRY_COMPARE(label("State").text(), QStringLiteral("studying"));
    }

    void aNewSessionCanBeTakenBackUntilTheNextMessage()
    {
        QSignalSpy requests(&m->panel, &ChatPanel::newSessionRequested);
        const auto wish = [this] {
            QTest::keyClick(&m->panel, Qt::Key_N, Qt::ControlModifier);
            return label("New session").isVisible();
        };
        QVERIFY(!wish());
        m->talk.exchange(QStringLiteral("Hello"), QStringLiteral("Hi"));
        QVERIFY(wish() && !button("New session").isEnabled());
        button("Undo").click();
        QVERIFY(!label("New session").isVisible() && button("New session").isEnabled());
        // A reply to a notification goes on with the conversation.
        QVERIFY(wish());
        m->talk.chat.submit(QStringLiteral("Later"));
        QVERIFY(!label("New session").isVisible() && requests.isEmpty());
        button("Stop").click();
        QVERIFY(wish());
        connect(&m->panel, &ChatPanel::newSessionRequested, this,
            [this] { QVERIFY(!m->talk.chat.isInTurn()); });
        ask(QStringLiteral("Next"));
        QCOMPARE(requests.size(), 1);
    }

    void aReplyIsGivenAgainAndTheEarlierOneStaysInReach()
    {
        const auto answer = [this](const QString& text) {
            QTRY_VERIFY(m->talk.model.isAsked());
            m->talk.model.say(text);
            QTRY_COMPARE(spoken().last(), u"Pobblewig is writing: "_s + text);
            m->talk.model.finish();
            QTRY_VERIFY(!m->talk.chat.isInTurn());
        };
        ask(u"Hello"_s);
        answer(u"Hi"_s);
        auto& view = m->named<QAbstractItemView>("Conversation");
        const auto point = [&](int row) {
            const auto place = view.visualRect(view.model()->index(row, 0)).center();
            QTest::mouseMove(view.viewport(), place);
        };
        point(2);
        QTRY_VERIFY(button("Answer again").isVisible());
        QVERIFY(!button("Edit and send again").isVisible());
        button("Answer again").click();
        answer(u"Good day"_s);
        QCOMPARE(spoken().size(), 3);
        QCOMPARE(spoken().last(), u"Pobblewig, 08:15, answer 2 of 2: Good day"_s);
        point(2);
        button("Earlier answer").click();
        QCOMPARE(spoken().last(), u"Pobblewig, 08:15, answer 1 of 2: Hi"_s);
        QTRY_VERIFY(!button("Earlier answer").isEnabled());
        button("Later answer").click();
        QCOMPARE(spoken().last(), u"Pobblewig, 08:15, answer 2 of 2: Good day"_s);
        point(1);
        button("Edit and send again").click();
        QCOMPARE(input().toPlainText(), u"Hello"_s);
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
        m->talk.exchange(QStringLiteral("tea or TEA"), QStringLiteral("Tea"));
        QTest::keyClick(&m->panel, Qt::Key_F, Qt::ControlModifier);
        auto& field = m->named<QLineEdit>("Find");
        QVERIFY(field.isVisible());
        QTest::keyClicks(&field, QStringLiteral("tea"));
        QCOMPARE(label("Matches").text(), QStringLiteral("3 of 3"));
        QTest::keyClick(&field, Qt::Key_Return);
        QCOMPARE(label("Matches").text(), QStringLiteral("1 of 3"));
        button("Previous match").click();
        QCOMPARE(label("Matches").text(), QStringLiteral("3 of 3"));
        m->talk.add(ChatMessage::Role::user, QStringLiteral("More tea"));
        QCOMPARE(label("Matches").text(), QStringLiteral("3 of 4"));
        QTest::keyClicks(&field, QStringLiteral("pot"));
        QCOMPARE(label("Matches").text(), QStringLiteral("No matches"));
        QTest::keyClick(&m->panel, Qt::Key_Escape);
        QVERIFY(!field.isVisible() && m->panel.isVisible());
        QVERIFY(input().hasFocus());
        QTest::keyClick(&m->panel, Qt::Key_Escape);
        QVERIFY(!m->panel.isVisible());
    }

    void everyKeyThatIsListedWorks()
    {
        QTest::keyClick(&m->panel, Qt::Key_Slash, Qt::ControlModifier);
        auto& list = m->named<QScrollArea>("Keys");
        QVERIFY(list.isVisible());
        QList<QKeySequence> made;
        for (const auto* const shortcut : m->panel.findChildren<QShortcut*>())
            made.append(shortcut->key());
        for (const auto* const action : m->panel.findChildren<QAction*>())
            made.append(action->shortcut());
        QStringList shown;
        for (const auto* const words : list.findChildren<QLabel*>())
            shown.append(words->text());
        for (const auto& key : PanelKeys::all()) {
            QVERIFY(key.act == PanelKeys::Act::ofControl || made.removeOne(key.sequence));
            QVERIFY(shown.contains(key.words));
        }
        made.removeAll(QKeySequence());
        QVERIFY(made.isEmpty());
        QTest::keyClick(&m->panel, Qt::Key_Escape);
        QVERIFY(!list.isVisible() && input().hasFocus());
    }

    void theConversationIsSavedAsText()
    {
        const QTemporaryDir folder;
        m->talk.add(ChatMessage::Role::user, QStringLiteral("Hi %1"), ScriptedChat::now - 24h);
        m->talk.add(ChatMessage::Role::assistant, QStringLiteral("Hello\nyou"));
        QTest::keyClick(&m->panel, Qt::Key_S, Qt::ControlModifier);
        auto* const dialog = m->panel.findChild<QFileDialog*>();
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
        for (auto* const control : m->panel.findChildren<QWidget*>()) {
            if (control->focusPolicy() & Qt::TabFocus && control->isVisibleTo(&m->panel))
                QVERIFY2(!control->accessibleName().isEmpty(), control->metaObject()->className());
        }
    }

private:
    std::optional<PanelFixture> m;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ChatPanelTest)
#include "ChatPanelTest.moc"
