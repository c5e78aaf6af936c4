#include "foundation/JSONFileStore.h"

#include "support/LogLines.h"

#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

class JSONFileStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aMissingFileIsNothingAndSaysNothing()
    {
        const QTemporaryDir scratch;
        const LogLines log;
        const JSONFileStore file(QDir(scratch.path()), QStringLiteral("numbers.json"));
        QVERIFY(!file.load<std::vector<int>>());
        QVERIFY(log.lines().isEmpty());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::JSONFileStoreTest)
#include "JSONFileStoreTest.moc"
