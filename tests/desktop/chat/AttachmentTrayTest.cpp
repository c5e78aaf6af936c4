#include "PobblewigDesktop/chat/AttachmentTray.h"

#include "PobblewigDesktop/chat/RegionView.h"
#include "desktop/chat/PanelFixture.h"
#include "prompts/AttachmentPrompts.h"
#include "support/TableRow.h"

#include <QAction>
#include <QBuffer>
#include <QClipboard>
#include <QDialog>
#include <QDropEvent>
#include <QMimeData>

namespace pobblewig {

class AttachmentTrayTest : public QObject {
    Q_OBJECT

    AttachmentTray& tray() const { return *m->panel.findChild<AttachmentTray*>(); }

    /// The names on the chips, once everything was read.
    QStringList chips() const
    {
        if (!QTest::qWaitFor([this] { return !tray().isReading(); }))
            qFatal("A file is still being read.");
        QStringList names;
        for (const auto* label : tray().findChildren<QLabel*>()) {
            if (label->accessibleName() == u"Attached" && label->isVisible())
                names.append(label->text());
        }
        return names;
    }

    QUrl file(const QString& name, const QByteArray& content = "Mitosis") const
    {
        m->scratch.write(name, content);
        return QUrl::fromLocalFile(m->scratch.path(name));
    }

    void attach(const QStringList& names)
    {
        DropContents contents;
        for (const auto& name : names)
            contents.files.append(file(name));
        m->panel.attach(contents);
    }

    void press(int key) const { QTest::keyClick(&m->input(), Qt::Key(key)); }

    QString newest() const { return m->talk.chat.messages().back().text; }

private Q_SLOTS:
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void whatIsPastedGoesIntoTheMessageOrWithIt_data()
    {
        columns<QString, QString, bool, QString, QStringList>(
            "text", "address", "hasPicture", "written", "chips");
        const auto page = u"https://a.org/cell.png"_s;
        row("text", "hi", "", false, "hi", QStringList());
        row("link", page, page, false, page, QStringList());
        row("file", "/notes.txt", "file", false, "", QStringList { u"notes.txt"_s });
        row("picture", "", "", true, "", QStringList { u"Pasted picture"_s });
        row("picture of a page", page, page, true, "", QStringList { u"Pasted picture"_s });
        row("cells of a table", "1\t2", "", true, "1\t2", QStringList());
    }
    void whatIsPastedGoesIntoTheMessageOrWithIt()
    {
        QFETCH(QString, text);
        QFETCH(QString, address);
        auto data = std::make_unique<QMimeData>();
        if (!text.isEmpty())
            data->setText(text);
        if (!address.isEmpty())
            data->setUrls({ address == u"file" ? file(u"notes.txt"_s) : QUrl(address) });
        QImage picture(20, 20, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QFETCH(bool, hasPicture);
        if (hasPicture)
            data->setImageData(picture);
        QGuiApplication::clipboard()->setMimeData(data.release());
        m->input().paste();
        QTEST(m->input().toPlainText(), "written");
        QTEST(chips(), "chips");
    }

    void whatIsDroppedIsSentOnceItWasRead()
    {
        QMimeData data;
        data.setUrls({ file(u"notes.txt"_s), file(u"id_rsa"_s) });
        QDragEnterEvent enter({ 50, 50 }, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&m->panel, &enter);
        QDropEvent drop({ 50, 50 }, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&m->panel, &drop);
        press(Qt::Key_Return);
        QVERIFY2(!m->talk.chat.isInTurn(), "nothing was read yet");
        QCOMPARE(chips(), QStringList({ u"notes.txt"_s, u"id_rsa"_s }));
        QVERIFY(tray().findChildren<QLabel*>().last()->text() == u"Secrets?");
        press(Qt::Key_Return);
        QTRY_VERIFY(m->talk.model.isAsked());
        QCOMPARE(newest(),
            Prompts::attachmentUserPrompt.toString() + u"\n\n[attached: notes.txt, id_rsa]"_s);
        QVERIFY(!tray().isVisible());
    }

    void whatCannotBeAttachedIsSaid()
    {
        attach({ u"1"_s, u"2"_s, u"3"_s, u"4"_s });
        m->panel.attach({ .files = { file(u"tape"_s, QByteArray(1, '\0')), file(u"6"_s) } });
        QCOMPARE(chips().size(), 4);
        QCOMPARE(m->label("Notice").text(),
            u"At most 5 files go with one message.\n"
            u"tape is neither a picture, a PDF nor a text in UTF-8."_s);
        m->button("Remove 2").setFocus();
        QTest::keyClick(&m->button("Remove 2"), Qt::Key_Space);
        QCOMPARE(chips(), QStringList({ u"1"_s, u"3"_s, u"4"_s }));
        QVERIFY(m->button("Remove 3").hasFocus());
    }

    void nothingIsLostWhileAReplyStreams_data()
    {
        columns<bool, QStringList>("isAnswered", "chips");
        row("answered", true, QStringList());
        row("stopped", false, QStringList({ u"a"_s, u"b"_s }));
    }
    void nothingIsLostWhileAReplyStreams()
    {
        QFETCH(bool, isAnswered);
        m->input().setPlainText(u"one"_s);
        press(Qt::Key_Return);
        QTRY_VERIFY(m->talk.model.isAsked());
        for (const auto& name : { u"a"_s, u"b"_s }) {
            attach({ name });
            chips();
            m->input().setPlainText(name);
            press(Qt::Key_Return);
        }
        QCOMPARE(m->label("Next message").text(), u"Next: a b [attached: a, b]"_s);
        m->talk.model.say(u"Hi"_s);
        QTRY_COMPARE(m->talk.chat.streamingPreview(), u"Hi");
        if (isAnswered)
            m->talk.model.finish();
        else
            m->button("Stop").click();
        QTRY_VERIFY(!m->label("Next message").isVisible());
        QTEST(chips(), "chips");
        QTRY_COMPARE(newest(), isAnswered ? u"a\n\nb\n\n[attached: a, b]"_s : u"Hi"_s);
        QCOMPARE(m->input().toPlainText(), isAnswered ? QString() : u"a\n\nb"_s);
    }

    void whatCouldNotBeSentComesBackUntilItIs_data()
    {
        columns<bool, QString, QString, QStringList>("isRetried", "newest", "written", "chips");
        row("retried", true, "one\n\n[attached: a]", "", QStringList());
        row("another is asked", false, "other", "one", QStringList { u"a"_s });
    }
    void whatCouldNotBeSentComesBackUntilItIs()
    {
        QFETCH(bool, isRetried);
        const auto provider = std::exchange(m->talk.models.main, nullptr);
        attach({ u"a"_s });
        chips();
        m->input().setPlainText(u"one"_s);
        press(Qt::Key_Return);
        QTRY_COMPARE(chips(), QStringList { u"a"_s });
        QCOMPARE(m->input().toPlainText(), u"one");
        m->talk.models.main = provider;
        if (isRetried)
            m->talk.chat.retryLast();
        else
            m->talk.chat.submit(u"other"_s);
        QTRY_VERIFY(m->talk.model.isAsked());
        QTEST(newest(), "newest");
        QTEST(chips(), "chips");
        QTEST(m->input().toPlainText(), "written");
    }

    void aPartOfTheScreenIsChosenWithKeys()
    {
        QImage screen(400, 200, QImage::Format_RGB32);
        screen.fill(Qt::blue);
        QBuffer file;
        screen.save(&file, "JPEG");
        m->talk.screen.enqueue(CapturedScreenshot { file.data(), u"Captured"_s });
        QTest::keyClick(&m->panel, Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(m->panel.findChild<RegionView*>());
        auto* const view = m->panel.findChild<RegionView*>();
        QCOMPARE(view->accessibleDescription(), u"200 × 100 at 100, 50");
        for (auto count = 0; count < 20; ++count) {
            QTest::keyClick(view, Qt::Key_Left);
            QTest::keyClick(view, Qt::Key_Up, Qt::ShiftModifier);
        }
        QCOMPARE(view->accessibleDescription(), u"200 × 16 at 0, 50");
        QTest::keyClick(view, Qt::Key_Return);
        QCOMPARE(chips(), QStringList { u"Part of the screen"_s });
        QCOMPARE(QImage::fromData(tray().take().front().jpegData).size(), QSize(200, 16));
    }

private:
    std::optional<PanelFixture> m;
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::AttachmentTrayTest)
#include "AttachmentTrayTest.moc"
