#include "foundation/LineSplitter.h"

#include <QTest>

namespace pobblewig {

class LineSplitterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void linesAreTheSameWhereverTheBytesAreCut_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArrayList>("lines");
        QTest::newRow("nothing") << QByteArray() << QByteArrayList();
        QTest::newRow("both ends")
            << QByteArray("a\r\nb\nc\r\n") << QByteArrayList { "a", "b", "c" };
        QTest::newRow("blank lines")
            << QByteArray("\n\r\na\n\n") << QByteArrayList { "", "", "a", "" };
        QTest::newRow("no end at the last")
            << QByteArray("a\nlast") << QByteArrayList { "a", "last" };
        QTest::newRow("a return inside")
            << QByteArray("a\rb\r\r\nc\r") << QByteArrayList { "a\rb\r", "c\r" };
        QTest::newRow("four-byte characters")
            << QByteArray("data: \xF0\x9F\xA6\x98\n\xF0\x9F")
            << QByteArrayList { "data: \xF0\x9F\xA6\x98", "\xF0\x9F" };
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
