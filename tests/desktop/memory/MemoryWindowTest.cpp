#include "PobblewigDesktop/memory/MemoryWindow.h"

#include "desktop/ScriptedParts.h"
#include "memory/history/ChatArchive.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedProvider.h"
#include "support/TableRow.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeView>

namespace pobblewig {

class MemoryWindowTest : public QObject {
    Q_OBJECT

    static constexpr auto now = ScriptedChat::now;

    /// The control of that name on the page that is seen.
    template <typename Widget>
    Widget& named(const char* name)
    {
        for (auto* const widget : m_window->findChildren<Widget*>()) {
            const auto isNamed = widget->accessibleName() == QString::fromUtf8(name)
                || widget->property("text").toString() == QString::fromUtf8(name);
            if (isNamed && widget->isVisible())
                return *widget;
        }
        qFatal("There is no control of the name %s.", name);
    }
    void click(const char* button) { named<QPushButton>(button).click(); }
    QTreeView& open(const QString& page, const char* list)
    {
        m_window->openPage(page);
        return named<QTreeView>(list);
    }
    static QStringList rows(const QTreeView& list)
    {
        QStringList texts;
        for (int row = 0; row < list.model()->rowCount(); ++row)
            texts.append(list.model()->index(row, 0).data().toString());
        return texts;
    }
    MemoryTiers& memory() { return m_coordinator->memory(); }

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchDirectory>();
        m_coordinator =
            std::make_unique<AppCoordinator>(scriptedParts(m_scratch->path().path(), m_model));
        memory().notes.addNote({ .text = u"Likes tea"_s }, now - std::chrono::hours(2));
        memory().notes.addNote({ .text = u"Has a cat"_s }, now - std::chrono::hours(1));
        m_coordinator->refresh();
        m_window = std::make_unique<MemoryWindow>(*m_coordinator, Calendar());
        connect(m_coordinator.get(), &AppCoordinator::stateChanged, m_window.get(),
            [this] { m_window->showState(m_coordinator->state()); });
        m_window->showState(m_coordinator->state());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void aNoteIsCorrectedDeletedAndPutBack()
    {
        auto& list = open(u"notes"_s, "Notes");
        auto& text = named<QPlainTextEdit>("Note");
        QCOMPARE(text.toPlainText(), u"Has a cat");
        text.setPlainText(u"Has two\ncats"_s);
        click("Save the correction");
        QCOMPARE(memory().notes.notes().front().text, u"Has two cats");
        QCOMPARE(memory().notes.notes().front().kind, MemoryKind::correction);
        QCOMPARE(rows(list), QStringList({ u"Has two cats"_s, u"Likes tea"_s }));

        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Delete);
        QCOMPARE(rows(list), QStringList(u"Likes tea"_s));
        QVERIFY(!m_scratch->read(u"memory.json"_s).contains("two cats"));
        click("Undo");
        QCOMPARE(rows(list), QStringList({ u"Has two cats"_s, u"Likes tea"_s }));
        QVERIFY(m_scratch->read(u"memory.json"_s).contains("two cats"));

        named<QLineEdit>("Search notes").setText(u"coffee"_s);
        QVERIFY(!list.isVisible());
    }

    void whatTheUserWritesSurvivesNewNotes()
    {
        auto& list = open(u"notes"_s, "Notes");
        auto& text = named<QPlainTextEdit>("Note");
        text.setPlainText(u"Has three"_s);
        memory().notes.addNote({ .text = u"Sings"_s }, now);
        m_coordinator->refresh();
        QCOMPARE(rows(list).size(), 3);
        QCOMPARE(text.toPlainText(), u"Has three");
        const auto written = list.currentIndex();
        list.setCurrentIndex(list.model()->index(2, 0));
        QCOMPARE(text.toPlainText(), u"Likes tea");
        list.setCurrentIndex(written);
        QCOMPARE(text.toPlainText(), u"Has three");
    }

    void anArchivedNoteIsBroughtBack()
    {
        auto archived = memory().notes.notes().front();
        archived.status = MemoryStatus::archived;
        m_coordinator->memoryDesk().putBack(archived);
        auto& list = open(u"notes"_s, "Notes");
        QCOMPARE(rows(list), QStringList(u"Likes tea"_s));
        named<QComboBox>("Status").setCurrentText(u"Archived"_s);
        click("Bring back");
        QCOMPARE(memory().notes.allNotes(MemoryStore::IncludeArchived::no).size(), 2u);
    }

    void aProposedSectionIsConfirmedAndAnotherRejected()
    {
        for (const auto& path : { u"boats"_s, u"chess"_s })
            memory().reference.proposeSection(path, path, {});
        m_coordinator->refresh();
        auto& list = open(u"reference"_s, "Reference");
        QCOMPARE(rows(list).first(2), QStringList({ u"boats"_s, u"chess"_s }));
        click("Confirm");
        QVERIFY(memory().reference.readSection(u"boats"_s));
        list.setCurrentIndex(list.model()->index(0, 0));
        click("Reject");
        QVERIFY(memory().reference.proposedSections().empty());
        QVERIFY(!rows(list).contains(u"chess"_s) && rows(list).contains(u"boats"_s));
        click("Undo");
        QCOMPARE(memory().reference.proposedSections().front().path, u"chess");
        QVERIFY(m_scratch->read(u"reference.json"_s).contains("boats"));
    }

    void anObservationIsFoundDeletedAndPutBack()
    {
        for (const auto& [text, tag] :
            { std::pair(u"Ran"_s, u"sport"_s), { u"Slept"_s, u"rest"_s } })
            memory().observations.add({ .id = QUuid::createUuid(),
                .occurredAt = now,
                .recordedAt = now,
                .summary = text,
                .tags = { tag } });
        m_coordinator->refresh();
        auto& list = open(u"observations"_s, "Observations");
        named<QComboBox>("Tag").setCurrentText(u"rest"_s);
        QCOMPARE(rows(list), QStringList(u"Slept"_s));
        click("Delete");
        QCOMPARE(memory().observations.count(), 1);
        click("Undo");
        QCOMPARE(rows(list), QStringList(u"Slept"_s));
    }

    void aDayLeadsToItsConversation()
    {
        memory().sessions.ensureActiveSession(now, Calendar());
        const auto closed = memory().sessions.finalizeActiveSession({ .summary = u"A day"_s }, now);
        m_coordinator->refresh();
        open(u"days"_s, "Days");
        const QSignalSpy links(m_window.get(), &PageWindow::linkRequested);
        click("Read the conversation");
        QCOMPARE(links.front().front().toString(),
            u"pobblewig:past/"_s + ChatArchive::name(closed->dayKey, closed->id));
    }

    void theModelSeesWhatThePageShows()
    {
        open(u"prompt"_s, "What the model sees now");
        click("Copy everything");
        const auto copied = QGuiApplication::clipboard()->text();
        m_model.enqueue(u"Hello"_s);
        m_coordinator->chat().submit(u"Hi"_s);
        QTRY_COMPARE(m_model.requests().size(), 1u);
        const auto& request = m_model.requests().front();
        QVERIFY(copied.startsWith(request.messages.front().content));
        QVERIFY(request.messages.front().content.contains(u"Has a cat"));
        const auto context = request.messages.back().content.section(u"The user's message"_s, 0, 0);
        QVERIFY(context.size() > 100 && copied.contains(context));
    }

    void allIsDeletedForGood()
    {
        open(u"notes"_s, "Notes");
        click("Delete");
        m_window->openPage(u"data"_s);
        click("Delete all memory…");
        auto& question = *m_window->findChild<QMessageBox*>();
        QVERIFY(question.informativeText().contains(u"1 note"));
        for (auto* const button : question.buttons()) {
            if (button->text() == u"Delete")
                button->click();
        }
        QVERIFY(memory().notes.notes().empty());
        for (const auto* const button : m_window->findChildren<QPushButton*>())
            QVERIFY(button->text() != u"Undo" || !button->isVisible());
    }

private:
    ScriptedProvider m_model;
    std::unique_ptr<ScratchDirectory> m_scratch;
    std::unique_ptr<AppCoordinator> m_coordinator;
    std::unique_ptr<MemoryWindow> m_window;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::MemoryWindowTest)
#include "MemoryWindowTest.moc"
