#include "conversation/ReplyPreview.h"

#include "conversation/ActionParser.h"
#include "support/TableRow.h"

#include <QDirIterator>
#include <QRegularExpression>

#include <set>

extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size);

namespace pobblewig {

namespace {

/// Without a run of backticks at the end, or a fence there whose tag is not complete or that has
/// neither tag nor contents.
QString withoutUnfinishedFence(QString text)
{
    while (text.endsWith(u'`'))
        text.chop(1);
    static const QRegularExpression unfinished(
        u"```\\s*$|```[ \\t]*(b|bu|bud|budd|buddy|buddy-[a-z]*|j|js|jso|json)[ \\t\\r]*$"_s);
    return text.remove(unfinished);
}

/// By looking at the whole each time.
QString expectedPreview(const QString& reply)
{
    const auto shown = ActionParser::stripPartialFence(ActionParser::stripControlFences(reply));
    return withoutUnfinishedFence(reply) == reply ? shown : withoutUnfinishedFence(shown).trimmed();
}

} // namespace

class ReplyPreviewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The names of the replies: "ok" is well-formed, "also" as well in our reading alone, "bad"
    /// has a block that is not, but is to be recognised, and "odd" may show what it likes.
    void noPieceOfAControlBlockIsSeen_data()
    {
        columns<QByteArray>("reply");
        // By a file of ours, since a fuzzing build has a directory of the same name.
        const QFileInfo seed(QFINDTESTDATA("../../fuzz/corpus/ActionParserFuzz/ok-plain"));
        QDirIterator files(seed.path(), QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            row(qPrintable(files.fileName()), file.readAll());
        }
    }
    void noPieceOfAControlBlockIsSeen()
    {
        QFETCH(QByteArray, reply);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uchar*>(reply.data()), size_t(reply.size()));
        const auto kind = QByteArray(QTest::currentDataTag()).split('-').first();
        const auto text = QString::fromUtf8(reply);
        const auto display = ActionParser::parse(text, {}).displayText;
        static const QRegularExpression piece(u"buddy-|\"(type|actions|tools)\""_s);
        ReplyPreview preview;
        for (qsizetype size = 1; size <= text.size(); ++size) {
            const auto soFar = text.first(size);
            preview.append(soFar.last(1));
            QCOMPARE(preview.text(), ActionParser::sanitizeForPreview(soFar));
            if (kind == "ok")
                QCOMPARE(preview.text(), expectedPreview(soFar));
            if (kind == "ok" || kind == "also")
                QVERIFY2(display.startsWith(preview.text()), qPrintable(preview.text()));
            if (kind != "odd")
                QVERIFY2(!preview.text().contains(piece), qPrintable(preview.text()));
        }
        if (kind == "ok" || kind == "also")
            QCOMPARE(preview.text(), withoutUnfinishedFence(display).trimmed());
    }

    void whatIsNoBlockAfterAllIsSeenInTheEnd_data()
    {
        columns<QString, QString>("reply", "seen");
        row("on one line", "A ```buddy-actions {} ``` \nB", "A \nB");
        row("begun on the line", "A\n```buddy-tools {\n}\n```\nB", "A\n\nB");
        row("not the last", "A\n```\n[]\n```\nB", "A\n```\n[]\n```\nB");
        row("the last", "A\n```\n[]\n```\n ", "A");
        row("JSON on one line", "A ```json []```\nB", "A");
        row("and a fence", "A ```json []```\nB\n```\nC", "A ```json []```\nB\n```\nC");
        row("sample at an end", "A\n```buddy-tools\n{}\n```json\n{}\n```\nB",
            "A\n```json\n{}\n```\nB");
    }
    void whatIsNoBlockAfterAllIsSeenInTheEnd()
    {
        QFETCH(QString, reply);
        QTEST(ActionParser::sanitizeForPreview(reply), "seen");
    }

    /// Whatever it begins with: with text, in a block or in one that may be none.
    void aReplyThatGrowsIsNotCopied()
    {
        const QStringList pieces { u"word "_s, u"`"_s, u"`a` "_s, u"```buddy-actions\n[]\n```\n."_s,
            u"```json\n{\"a\":[1]}\n```\n"_s, u"```json\n"_s, u"```json "_s, u"a```json\n{\""_s,
            u"```\n[{\""_s, u"```\n[]\n``` \n"_s, u"\n"_s, u" "_s };
        for (const auto& beginning :
            { u"a\n"_s, u"```buddy-tools\n"_s, u"```json \n{\"a"_s, u"```json5"_s, u"``` "_s }) {
            for (const auto& piece : pieces) {
                ReplyPreview preview;
                std::set<const QChar*> buffers;
                preview.append(beginning);
                for (const auto character : piece.repeated(30'000 / piece.size())) {
                    preview.append(QString(character));
                    buffers.insert(preview.text().constData());
                }
                QVERIFY2(buffers.size() < 100, qPrintable(piece));
            }
        }
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ReplyPreviewTest)
#include "ReplyPreviewTest.moc"
