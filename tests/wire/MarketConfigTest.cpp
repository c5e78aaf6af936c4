#include "wire/MarketConfig.h"

#include "support/LogLines.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

class MarketConfigTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// A file is "-" for none, else its contents.
    void theFirstFileThatDecodesWins_data()
    {
        QTest::addColumn<QByteArray>("named");
        QTest::addColumn<QByteArray>("working");
        QTest::addColumn<QByteArray>("carried");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char* name, const QByteArray& named, const QByteArray& working,
                             const QByteArray& carried, const char* label, const char* complaint) {
            QTest::newRow(name) << named << working << carried << QString::fromLatin1(label)
                                << QString::fromLatin1(complaint);
        };
        const QByteArray n = R"({"defaultVendorLabel": "named"})";
        const QByteArray w = R"({"defaultVendorLabel": "working"})";
        const QByteArray c = R"({"defaultVendorLabel": "carried"})";
        row("all", n, w, c, "named", "");
        row("none named", "-", w, c, "working", "");
        row("only carried", "-", "-", c, "carried", "");
        row("none", "-", "-", "-", "local", "");
        row("broken", "{", w, c, "working", "unterminated object");
        row("empty", "", "-", c, "carried", "illegal value");
        row("an array", "[]", "-", "-", "local", "$: expected an object, found an array");
        row("wrong type", R"({"downloadUrl": 1})", w, c, "working",
            "$.downloadUrl: expected a string, found a number");
        row("too large", n + QByteArray(1024 * 1024, ' '), w, c, "working", "larger than 1 MiB");
    }
    void theFirstFileThatDecodesWins()
    {
        QFETCH(QByteArray, named);
        QFETCH(QByteArray, working);
        QFETCH(QByteArray, carried);
        QFETCH(QString, complaint);
        const QTemporaryDir scratch;
        const auto file = [&](const QString& name, const QByteArray& text) {
            QFile written(scratch.filePath(name));
            if (text != "-" && written.open(QIODevice::WriteOnly))
                written.write(text);
            return written.fileName();
        };
        const auto path = file(QStringLiteral("named"), named);
        const LogLines log;
        const auto config = MarketConfig::load({ { QStringLiteral("MARKET_CONFIG_PATH"), path } },
            { file(QStringLiteral("working"), working), file(QStringLiteral("carried"), carried) });
        QTEST(config.defaultVendorLabel, "label");
        QStringList expected;
        if (!complaint.isEmpty())
            expected.append(QStringLiteral("buddy: market config %1 didn't decode, ignoring it: %2")
                                .arg(path, complaint));
        QCOMPARE(log.lines(), expected);
    }

    void whatAFileLacksKeepsItsBuiltInValue()
    {
        const QTemporaryDir scratch;
        QFile file(scratch.filePath(QStringLiteral("market.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"({"backendBaseUrl": "b", "downloadUrl": null, "more": {}})");
        file.close();
        auto expected = MarketConfig::placeholder();
        expected.backendBaseUrl = QStringLiteral("b");
        const Environment emptyName { { QStringLiteral("MARKET_CONFIG_PATH"), QString() } };
        QVERIFY(MarketConfig::load(emptyName, { scratch.path(), file.fileName() }) == expected);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MarketConfigTest)
#include "MarketConfigTest.moc"
