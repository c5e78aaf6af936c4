#include "wire/MarketConfig.h"

#include "support/LogLines.h"
#include "support/TableRow.h"

#include <QFile>
#include <QTemporaryDir>

namespace pobblewig {

class MarketConfigTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// A file is null for none, else its contents.
    void theFirstFileThatDecodesWins_data()
    {
        QTest::addColumn<QByteArray>("named");
        QTest::addColumn<QByteArray>("working");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("complaint");
        const QByteArray n = R"({"defaultVendorLabel": "named"})";
        const QByteArray w = R"({"defaultVendorLabel": "working"})";
        row("both", n, w, "named", "");
        row("none named", QByteArray(), w, "working", "");
        row("none", QByteArray(), QByteArray(), "local", "");
        row("broken", QByteArray("{"), w, "working", "unterminated object");
        row("empty", QByteArray(""), QByteArray(), "local", "illegal value");
        row("an array", QByteArray("[]"), w, "working", "$: expected an object, found an array");
        row("wrong type", QByteArray(R"({"downloadUrl": 1})"), w, "working",
            "$.downloadUrl: expected a string, found a number");
        row("too large", n + QByteArray(1024 * 1024, ' '), w, "working", "larger than 1 MiB");
    }
    void theFirstFileThatDecodesWins()
    {
        QFETCH(QByteArray, named);
        QFETCH(QByteArray, working);
        QFETCH(QString, complaint);
        const QTemporaryDir scratch;
        const auto file = [&](const QString& name, const QByteArray& text) {
            QFile written(scratch.filePath(name));
            if (!text.isNull() && written.open(QIODevice::WriteOnly))
                written.write(text);
            return written.fileName();
        };
        const auto path = file(QStringLiteral("named"), named);
        const LogLines log;
        const auto config = MarketConfig::load({ { QStringLiteral("MARKET_CONFIG_PATH"), path } },
            { scratch.path(), file(QStringLiteral("working"), working) });
        auto expected = MarketConfig::placeholder();
        expected.defaultVendorLabel = config.defaultVendorLabel;
        QTEST(config.defaultVendorLabel, "label");
        QVERIFY(config == expected);
        QCOMPARE(log.lines().size(), complaint.isEmpty() ? 0 : 1);
        if (!complaint.isEmpty())
            QCOMPARE(log.lines()[0],
                QStringLiteral("buddy: market config %1 didn't decode, ignoring it: %2")
                    .arg(path, complaint));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MarketConfigTest)
#include "MarketConfigTest.moc"
