#include "PobblewigDesktop/chat/past/PastConversations.h"

#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/past/ConversationExport.h"
#include "desktop/chat/PanelFixture.h"
#include "memory/history/ChatArchive.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedStores.h"
#include "support/TableRow.h"

#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

namespace pobblewig {

class PastConversationsTest : public QObject {
    Q_OBJECT

    ScratchDirectory m_scratch;
    ScriptedStores m_stores { m_scratch };
    ConversationLibrary m_library { m_stores.history, m_stores.memory, m_stores.moment, m_scratch };
    Calendar m_calendar { QTimeZone::utc(), QLocale(u"en_GB"_s) };

    std::vector<ChatMessage> m_old {
        { .id = QUuid::createUuid(), .text = u"An old question"_s, .timestamp = {} },
        { .id = QUuid::createUuid(), .role = ChatMessage::Role::assistant, .text = u"*Yes*"_s },
    };

    QPushButton& button(const QWidget& window, const QString& text)
    {
        for (auto* const button : window.findChildren<QPushButton*>()) {
            if (button->text() == text)
                return *button;
        }
        qFatal("There is no such button.");
    }

private Q_SLOTS:
    void aConversationIsFoundReadAndDeleted()
    {
        QVERIFY(ChatArchive::write(m_scratch, m_old, u"2026-02-20"_s, QUuid::createUuid()));
        m_stores.history.append(
            { .id = QUuid::createUuid(), .text = u"New"_s, .timestamp = m_stores.time });
        PastConversations window(m_library, m_calendar, m_stores.moment.clock);
        window.show();
        auto& days = *window.findChild<QListWidget*>();
        const auto& shown = *window.findChild<ConversationModel*>();
        QTRY_COMPARE(days.count(), 2);
        QCOMPARE(days.item(0)->text(), u"Today · 1 message\nNew");
        QCOMPARE(days.item(1)->text(), u"Friday, 20 February 2026 · 2 messages\nAn old question");
        QTRY_COMPARE(shown.rowCount(), 2);
        // What is going on is not deleted here.
        QVERIFY(!button(window, u"Delete…"_s).isEnabled());

        window.findChild<QLineEdit*>()->setText(u"OLD quest"_s);
        QTRY_COMPARE(days.count(), 1);
        QTRY_COMPARE(shown.row(shown.rowCount() - 1).text, u"*Yes*");
        const auto& count = *PanelFixture::find<QLabel>(window, "Matches");
        QTRY_COMPARE(count.text(), u"1 of 2");
        for (const auto& [key, expected] :
            { std::pair(Qt::Key_F3, u"2 of 2"), { Qt::Key_Return, u"1 of 2" } }) {
            QTest::keyClick(window.focusWidget(), key);
            QCOMPARE(count.text(), expected);
        }
        button(window, u"Delete…"_s).click();
        auto& question = *window.findChild<QMessageBox*>();
        QVERIFY(question.text().contains(u"20 February 2026"));
        button(question, u"Cancel"_s).click();
        QCOMPARE(ChatArchive::names(m_scratch.path()).size(), 1);
        button(window, u"Delete…"_s).click();
        for (auto* const asked : window.findChildren<QMessageBox*>()) {
            if (asked->isVisible())
                button(*asked, u"Delete"_s).click();
        }
        QVERIFY(ChatArchive::names(m_scratch.path()).isEmpty());
        QTRY_COMPARE(days.count(), 0);
        QTRY_COMPARE(shown.rowCount(), 0);
    }

    void aConversationIsExported()
    {
        QCOMPARE(ConversationExport::markdown(m_old, m_calendar),
            "# Thursday, 1 January 1970\n\n**You**, 00:00\n\nAn old question\n\n"
            "**Pobblewig**, 00:00\n\n*Yes*\n\n");
        QVERIFY(json::decode<std::vector<ChatMessage>>(
                    QJsonDocument::fromJson(ConversationExport::json(m_old)).array())
            == m_old);
    }
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::PastConversationsTest)
#include "PastConversationsTest.moc"
