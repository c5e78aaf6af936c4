#include "foundation/LineSplitter.h"

#include "support/TableRow.h"

namespace pobblewig {

class LineSplitterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void linesAreTheSameWhereverTheBytesAreCut_data()
    {
        using Bytes = QByteArray;
        using Lines = QByteArrayList;
        QTest::addColumn<Bytes>("bytes");
        QTest::addColumn<Lines>("lines");
        row("nothing", Bytes(), Lines());
        row("both ends", Bytes("a\r\nb\nc\r\n"), Lines { "a", "b", "c" });
        row("blank lines", Bytes("\n\r\na\n\n"), Lines { "", "", "a", "" });
        row("no end at the last", Bytes("a\nlast"), Lines { "a", "last" });
        row("a return inside", Bytes("a\rb\r\r\nc\r"), Lines { "a\rb\r", "c\r" });
        row("half a character", Bytes("\xF0\x9F\xA6\x98\n\xF0"),
            Lines { "\xF0\x9F\xA6\x98", "\xF0" });
    }
    void linesAreTheSameWhereverTheBytesAreCut()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArrayList, lines);
        for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
            LineSplitter splitter(100);
            auto found = splitter.add(bytes.first(cut)) + splitter.add(bytes.sliced(cut));
            if (const auto last = splitter.finish())
                found.append(*last);
            QCOMPARE(found, lines);
        }
    }

    void aLineMayBeAsLongAsTheMaximumAndNoLonger()
    {
        LineSplitter splitter(3);
        QCOMPARE(splitter.add("abc\nab"), QByteArrayList { "abc" });
        QCOMPARE(splitter.add("c\n"), QByteArrayList { "abc" });
        QVERIFY(!splitter.isTooLong());
        QCOMPARE(splitter.add("x\nabcd\ny\n"), QByteArrayList { "x" });
        QVERIFY(splitter.isTooLong());
        QVERIFY(splitter.add("z\n").isEmpty());
        QVERIFY(!splitter.finish());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LineSplitterTest)
#include "LineSplitterTest.moc"
