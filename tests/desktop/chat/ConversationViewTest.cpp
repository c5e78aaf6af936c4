#include "PobblewigDesktop/chat/ConversationView.h"
#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/TextColumn.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

namespace pobblewig {

namespace {

using Kind = ConversationRow::Kind;

std::vector<ConversationRow> rows(int first, int last, int repeated = 20)
{
    std::vector<ConversationRow> result;
    for (auto number = first; number <= last; ++number)
        result.push_back({ .kind = number % 2 == 0 ? Kind::assistant : Kind::user,
            .id = QUuid(uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
            .text = QStringLiteral("Message %1 says this. ").arg(number).repeated(repeated) });
    return result;
}

} // namespace

class ConversationViewTest : public QObject {
    Q_OBJECT

    void show(const std::vector<ConversationRow>& shown)
    {
        m_view.reset();
        m_model = std::make_unique<ConversationModel>();
        m_model->setRows(shown);
        m_view = std::make_unique<ConversationView>(*m_model);
        m_view->setTheme(Theme::palette(ColorScheme::light, {}));
        m_view->resize(400, 500);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
        settle();
    }

    /// Until nothing is left to lay out: then the end stays where it is.
    void settle() const
    {
        auto before = -1;
        QTRY_VERIFY(std::exchange(before, bar().maximum()) == bar().maximum()
            && std::ranges::none_of(m_view->findChildren<QTimer*>(), &QTimer::isActive));
    }

    QScrollBar& bar() const { return *m_view->verticalScrollBar(); }
    int topOf(int number) const { return m_view->visualRect(m_model->index(number)).top(); }
    bool isAtEnd() const { return bar().value() == bar().maximum() && bar().maximum() > 0; }

private Q_SLOTS:
    void cleanup()
    {
        m_view.reset();
        m_model.reset();
    }

    void theEndIsFollowedWhileAReplyGrows()
    {
        show(rows(1, 10));
        QVERIFY(isAtEnd());
        m_model->setReply(ConversationRow { .kind = Kind::preview });
        QString reply;
        for (auto count = 0; count < 30; ++count) {
            reply += QStringLiteral("Some more words of the reply. ");
            m_model->setReplyText(reply);
            settle();
            QVERIFY(isAtEnd());
        }
    }

    void whatIsReadStaysInPlace_data()
    {
        QTest::addColumn<std::function<void()>>("change");
        using Change = std::function<void()>;
        QTest::newRow("a growing reply") << Change([this] {
            m_model->setReply(ConversationRow { .kind = Kind::preview });
            m_model->setReplyText(QStringLiteral("words ").repeated(500));
        });
        QTest::newRow("the oldest messages go")
            << Change([this] { m_model->setRows(rows(3, 11)); });
        QTest::newRow("texts above grow") << Change([this] {
            auto edited = rows(1, 10);
            edited[1].text = edited[1].text.repeated(20);
            m_model->setRows(edited);
        });
    }
    void whatIsReadStaysInPlace()
    {
        QFETCH(std::function<void()>, change);
        show(rows(1, 10));
        bar().setValue(bar().maximum() / 2);
        const auto reading = QPersistentModelIndex(m_view->indexAt({ 200, 100 }));
        const auto top = topOf(reading.row());
        change();
        settle();
        QCOMPARE(topOf(reading.row()), top);
        QVERIFY(!isAtEnd());
        QVERIFY(m_view->findChild<QToolButton*>()->isVisible());
        m_view->followLatest();
        QVERIFY(isAtEnd());
        QVERIFY(!m_view->findChild<QToolButton*>()->isVisible());
    }

    void theSameLineIsAtTheTopAfterResizing()
    {
        show(rows(1, 6, 300));
        bar().setValue(bar().maximum() / 2);
        const auto reading = m_view->indexAt({ 200, 0 });
        const auto share = [&] {
            const auto box = m_view->visualRect(reading);
            return double(-box.top()) / box.height();
        };
        const auto before = share();
        m_view->resize(300, 500);
        settle();
        QCOMPARE(m_view->indexAt({ 200, 0 }), reading);
        QVERIFY(qAbs(share() - before) < 0.03);
        m_view->resize(400, 500);
        settle();
        QVERIFY(qAbs(share() - before) < 0.01);
    }

    void textIsMarkedWithTheMouseAndCopied()
    {
        show(rows(2, 2, 1));
        const QPoint inFirstLine(17, 8);
        const auto end = m_view->visualRect(m_model->index(0)).topRight() + QPoint(-20, 8);
        QTest::mousePress(m_view->viewport(), Qt::LeftButton, {}, inFirstLine);
        QTest::mouseMove(m_view->viewport(), end);
        QMouseEvent move(QEvent::MouseMove, end, m_view->viewport()->mapToGlobal(end), Qt::NoButton,
            Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_view->viewport(), &move);
        QTest::mouseRelease(m_view->viewport(), Qt::LeftButton, {}, end);
        QCOMPARE(m_view->textToCopy(), QStringLiteral("Message 2 says this."));

        QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, {}, inFirstLine + QPoint(8, 0));
        QTest::keyClick(m_view.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("Message"));
    }

    void theKeyboardReachesAndCopiesEveryMessage()
    {
        show(rows(1, 4, 2));
        m_view->setFocus();
        for (auto number = 4; number >= 1; --number) {
            QTest::keyClick(m_view.get(), Qt::Key_C, Qt::ControlModifier);
            QCOMPARE(QGuiApplication::clipboard()->text().trimmed(),
                m_model->row(number - 1).text.trimmed());
            QTest::keyClick(m_view.get(), Qt::Key_Up);
        }
    }

    void aSelectionReachesAcrossMessages()
    {
        show(rows(1, 3, 1));
        const auto at = [this](int row, int x) {
            return m_view->visualRect(m_model->index(row)).topLeft() + QPoint(x, 14);
        };
        QTest::mousePress(m_view->viewport(), Qt::LeftButton, {}, at(2, 370));
        QTest::mousePress(m_view->viewport(), Qt::LeftButton, Qt::ShiftModifier, at(1, 10));
        QCOMPARE(m_view->textToCopy().count(QStringLiteral("says this")), 2);
        QVERIFY(m_view->textToCopy().contains(QStringLiteral(".\n\n"))
            || m_view->textToCopy().contains(QStringLiteral(". \n\n")));
    }

    void linksAndCodeAnswerToTheMouse()
    {
        auto message = rows(2, 2, 1);
        message.front().text = QStringLiteral("[page](https://kde.org)\n\n```\nint **a;\n\nb\n```");
        show(message);
        const QSignalSpy links(m_view.get(), &ConversationView::linkRequested);
        const auto row = m_view->visualRect(m_model->index(0));
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, row.topLeft() + QPoint(24, 8));
        QCOMPARE(links.size(), 1);
        QCOMPARE(links.first().first().toString(), QStringLiteral("https://kde.org"));
        for (auto y = 24; y < row.height(); y += 8) {
            QTest::mouseClick(
                m_view->viewport(), Qt::LeftButton, {}, row.topRight() + QPoint(-30, y));
            if (QGuiApplication::clipboard()->text() == QStringLiteral("int **a;\n\nb"))
                return;
        }
        QFAIL("no button copies the code");
    }

    void onlyWhatIsShownIsCopied()
    {
        auto message = rows(1, 1, 1);
        message.front().text = QStringLiteral("rm\x1b[1A\x08 -rf\ttree\r\nnext\u0085");
        show(message);
        m_view->setFocus();
        QTest::keyClick(m_view.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("rm [1A  -rf\ttree \nnext "));
    }

    void aMatchIsBroughtIntoSight()
    {
        show(rows(1, 10, 100));
        const auto& text = m_model->row(2).text;
        const MessageRange match { m_model->row(2).id, { text.size() - 5, 4 } };
        m_view->setMatches({ match }, match);
        m_view->reveal(match);
        const auto bottom = m_view->visualRect(m_model->index(2)).bottom();
        QVERIFY(bottom > 0 && bottom < m_view->viewport()->height());
        settle();
        QCOMPARE(m_view->visualRect(m_model->index(2)).bottom(), bottom);
    }

    void theUsersMessagesStandWhereLinesEnd()
    {
        show(rows(1, 1, 1));
        for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
            m_view->setLayoutDirection(direction);
            m_view->doItemsLayout();
            const auto picture = m_view->viewport()->grab().toImage();
            const auto y = topOf(0) + 4;
            const auto bubble = Theme::palette(ColorScheme::light, {}).bubble;
            const auto isBubble = [&](int x) { return picture.pixelColor(x, y) == bubble; };
            const auto column = TextColumn::margin + 16;
            QCOMPARE(isBubble(picture.width() - column), direction == Qt::LeftToRight);
            QCOMPARE(isBubble(column), direction == Qt::RightToLeft);
        }
    }

private:
    std::unique_ptr<ConversationModel> m_model;
    std::unique_ptr<ConversationView> m_view;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::ConversationViewTest)
#include "ConversationViewTest.moc"
