#include "conversation/attachments/AttachmentReading.h"

#include "conversation/attachments/AttachmentLogic.h"
#include "support/Awaited.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

#include <QBuffer>

#include <sys/stat.h>

namespace pobblewig {

namespace {

QByteArray picture(const char* format, QSize size = { 40, 30 })
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QBuffer file;
    image.save(&file, format);
    return file.data();
}

/// With another width and height in its header.
QByteArray hugeJPEG()
{
    auto file = picture("JPEG");
    return file.replace(file.indexOf("\xff\xc0") + 5, 4, "\xea\x60\xea\x60", 4);
}

QByteArray pdf(const QByteArray& words, const QByteArray& trailer = {})
{
    const auto drawing = "BT /F 12 Tf 10 50 Td (" + words + ") Tj ET";
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
           "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 999 99999]/Contents 4 0 R"
           "/Resources<</Font<</F 5 0 R>>>>>>endobj\n4 0 obj<</Length "
        + QByteArray::number(drawing.size()) + ">>stream\n" + drawing
        + "\nendstream endobj\n5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj\n"
          "trailer<</Root 1 0 R"
        + trailer + ">>\n";
}

QByteArray encryptedPDF()
{
    const auto hash = '<' + QByteArray(64, 'a') + '>';
    return pdf("secret",
        "/ID[" + hash + hash + "]/Encrypt<</Filter/Standard/V 1/R 2/P -4/O" + hash + "/U" + hash
            + ">>");
}

/// What was read, or why not.
QString outcome(const AttachmentReading::Result& result)
{
    if (!result)
        return result.error().description();
    const auto isPicture = result->kind == Attachment::Kind::picture;
    const auto shown = QImage::fromData(result->jpegData);
    return isPicture ? u"%1 x %2"_s.arg(shown.width()).arg(shown.height()) : result->text;
}

} // namespace

class AttachmentReadingTest : public QObject {
    Q_OBJECT

    QString read(const QString& name) const
    {
        return outcome(awaited(AttachmentReading::file(QUrl::fromLocalFile(m_scratch.path(name)))));
    }

private Q_SLOTS:
    void whatAFileHoldsDecides_data()
    {
        columns<QByteArray, QString>("content", "outcome");
        const auto refused = u"file.bin is neither a picture, a PDF nor a text in UTF-8."_s;
        const auto damaged = u"file.bin is damaged: the picture cannot be shown."_s;
        row("text",
            QByteArray("\xef\xbb\xbf"
                       "caf\xc3\xa9"),
            "café");
        row("other encoding", QByteArray("caf\xe9"), refused);
        row("NUL", QByteArray("a\0b", 3), refused);
        row("only the sign of a WebP", QByteArray("RIFF"), "RIFF");
        row("nothing", QByteArray(), "file.bin is empty.");
        for (const auto* const format : { "PNG", "JPEG", "WEBP" }) {
            const auto whole = picture(format);
            row(format, whole, "40 x 30");
            row(qPrintable(u"cut %1"_s.arg(QLatin1String(format))), whole.chopped(20), damaged);
        }
        row("wide", picture("PNG", { 3136, 20 }), "1568 x 10");
        row("bomb", hugeJPEG(), "file.bin has too many pixels. Make it smaller first.");
        row("PDF", pdf("Mitosis"), "Mitosis");
        row("PDF of pictures", pdf(""),
            "file.bin holds no text, only pictures of pages. Attach a picture of a page.");
        row("broken PDF", QByteArray("%PDF-1.4 and nothing else"),
            "file.bin is damaged: its text cannot be read.");
        row("encrypted PDF", encryptedPDF(),
            "file.bin is protected by a password. Save a copy without one.");
    }
    void whatAFileHoldsDecides()
    {
        QFETCH(QByteArray, content);
        m_scratch.write(u"file.bin"_s, content);
        QTEST(read(u"file.bin"_s), "outcome");
    }

    void onlyTheBeginningOfALongTextIsTaken()
    {
        const auto cut = [&](const QByteArray& content) {
            m_scratch.write(u"long"_s, content);
            return *awaited(
                AttachmentReading::file(QUrl::fromLocalFile(m_scratch.path(u"long"_s))));
        };
        const auto text = cut("x" + QByteArray("\xe2\x82\xac").repeated(70'000));
        QVERIFY(text.isCut && text.size == 210'001);
        QVERIFY2(text.text == u'x' + u"€"_s.repeated(66'666), "cut between characters");
        QVERIFY(AttachmentLogic::texts({ text }).endsWith(
            u"(Only the beginning of long is shown; the rest was too long.)\n\n"));
        const auto line = QByteArray(49, 'x') + ") Tj 0 12 Td (";
        const auto pages = cut(pdf(line.repeated(6'000)));
        QVERIFY(pages.isCut && pages.text.size() == AttachmentLogic::mostTextBytes);
    }

    void onlyFilesAreRead()
    {
        QVERIFY(m_scratch.path().mkdir(u"folder"_s));
        QCOMPARE(read(u"folder"_s), u"folder is not a file.");
        ::mkfifo(qPrintable(m_scratch.path(u"pipe"_s)), 0600);
        QCOMPARE(read(u"pipe"_s), u"pipe is not a file.");
        QCOMPARE(read(u"gone"_s), u"gone cannot be read.");
        QFile large(m_scratch.path(u"large"_s));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(20'000'001));
        QCOMPARE(read(u"large"_s), u"large is larger than 20 MB.");
        const QUrl elsewhere(u"sftp://host/notes.txt"_s);
        QCOMPARE(outcome(awaited(AttachmentReading::file(elsewhere))),
            u"sftp://host/notes.txt is not a file on this computer. Save it first.");
    }

    void aNameIsShownWithoutItsTricks()
    {
        const auto hostile = u"a\nb\u202Efdp"_s + u"x"_s.repeated(200) + u".txt"_s;
        m_scratch.write(hostile, "hi");
        m_scratch.write(u"id_rsa"_s, "key");
        const auto named = [&](const QString& name) {
            return *awaited(AttachmentReading::file(QUrl::fromLocalFile(m_scratch.path(name))));
        };
        QCOMPARE(named(hostile).name, u"a bfdp"_s + u"x"_s.repeated(74) + u'…');
        QVERIFY(named(u"id_rsa"_s).isSecret && !named(hostile).isSecret);
    }

    void withoutItsReaderAPDFIsRefused()
    {
        m_scratch.write(u"file.pdf"_s, pdf("Mitosis"));
        const auto path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(m_scratch.path().path()));
        const auto told = read(u"file.pdf"_s);
        qputenv("PATH", path);
        QVERIFY2(told.endsWith(u"Install the package poppler-utils."), qPrintable(told));
    }

private:
    ScratchDirectory m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AttachmentReadingTest)
#include "AttachmentReadingTest.moc"
