#include "support/TableRow.h"

#include <QDirIterator>
#include <QRegularExpression>

extern "C" int LLVMFuzzerTestOneInput(const uchar* data, size_t size);

namespace pobblewig {

namespace {

constexpr std::array strangeValues { "null", "true", "0", "-0.0", "0.1", "1e308", "1e999",
    "2147483648", "9007199254740993", "9223372036854775808", "[]", "{}", "[[]]", "\"\"",
    "{\"\":{\"a\":[null]}}", "{\"\\ud800\":true,\"\\udc00\":true}", "\"\\ud800\\u0000\"",
    "\"9999-12-31T23:59:59Z\"", "\"00000000-0000-0000-0000-000000000000\"" };

void run(const QByteArray& input)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const uchar*>(input.data()), size_t(input.size()));
}

} // namespace

/// What the fuzzing program demands of the codec, for the seeds and all that lies next to them.
class CodecFuzzTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsReadIsWhatIsWritten_data()
    {
        QTest::addColumn<QByteArray>("seed");
        QDirIterator files(QFINDTESTDATA("../../fuzz/corpus/CodecFuzz"), QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            row(qPrintable(files.fileName()), file.readAll());
        }
    }
    void whatIsReadIsWhatIsWritten()
    {
        QFETCH(QByteArray, seed);
        run(seed);
        static const QRegularExpression value(QStringLiteral("(?<=[:,[])(\"[^\"]*\"|[\\w.+-]+)"));
        auto values = value.globalMatch(QString::fromLatin1(seed));
        while (values.hasNext()) {
            const auto found = values.next();
            for (const auto* strange : strangeValues)
                run(QByteArray(seed).replace(
                    found.capturedStart(), found.capturedLength(), strange));
        }
        for (qsizetype bit = 0; bit < 8 * seed.size(); ++bit) {
            auto flipped = seed;
            flipped[bit / 8] = char(flipped[bit / 8] ^ (1 << bit % 8));
            run(flipped);
        }
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CodecFuzzTest)
#include "CodecFuzzTest.moc"
