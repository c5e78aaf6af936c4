#include "foundation/FileOperations.h"

#include "support/FaultyFileOperations.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

namespace {

const QByteArray oldText(3000, 'o');
const QByteArray newText(5000, 'n');

void put(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class FileOperationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_path = m_scratch->filePath(QStringLiteral("deep/er/notes.json"));
    }

    void anyFailingCallLeavesTheOldFileOrTheNew_data()
    {
        QTest::addColumn<bool>("existedBefore");
        QTest::newRow("over an old file") << true;
        QTest::newRow("where there was none") << false;
    }
    void anyFailingCallLeavesTheOldFileOrTheNew()
    {
        QFETCH(bool, existedBefore);
        int failingCall = 0;
        bool succeeded = false;
        while (!succeeded) {
            init();
            if (existedBefore)
                QVERIFY(writeDurably(m_path, oldText, FileOperations()));
            const FaultyFileOperations operations(++failingCall);
            succeeded = writeDurably(m_path, newText, operations).has_value();

            const auto left = contents(m_path);
            const auto isOld = left == (existedBefore ? oldText : QByteArray());
            QVERIFY2(isOld || left == newText, qPrintable(QString::number(failingCall)));
            QCOMPARE(QFile::exists(m_path), existedBefore || left == newText);
            QVERIFY(succeeded ? operations.calls() < failingCall : true);
        }
        QCOMPARE(failingCall - 1, 7);
        QCOMPARE(contents(m_path), newText);
    }

    void aShortWriteIsContinued()
    {
        const FaultyFileOperations operations(3, FaultyFileOperations::Fault::shortWrite);
        QVERIFY(writeDurably(m_path, newText, operations));
        QCOMPARE(contents(m_path), newText);
    }

    void aFullDiskKeepsTheOldFileAndSaysSo()
    {
        if (!QFileInfo::exists(QStringLiteral("/dev/full")))
            QSKIP("this system has no full device");
        class FullDisk : public FileOperations {
            tl::expected<int, std::error_code> create(
                const QString&, std::optional<unsigned>) const override
            {
                return FileOperations::create(QStringLiteral("/dev/full"), std::nullopt);
            }
        };
        QVERIFY(writeDurably(m_path, oldText, FileOperations()));
        const auto outcome = writeDurably(m_path, newText, FullDisk());
        QVERIFY(!outcome);
        QCOMPARE(outcome.error().description(), QStringLiteral("No space left on device"));
        QCOMPARE(contents(m_path), oldText);
    }

    void aLinkAndPermissionsAreKept()
    {
        const auto target = m_scratch->filePath(QStringLiteral("kept elsewhere.json"));
        const auto link = m_scratch->filePath(QStringLiteral("link.json"));
        put(target, oldText);
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner;
        QVERIFY(QFile::setPermissions(target, permissions));
        QVERIFY(QFile::link(target, link));

        QVERIFY(writeDurably(link, newText, FileOperations()));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(contents(target), newText);
        const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
            | QFile::ReadOther;
        QCOMPARE(QFileInfo(target).permissions() & owner, permissions);
    }

    void whatACrashLeftBehindIsOverwritten()
    {
        QVERIFY(writeDurably(m_path, oldText, FileOperations()));
        const auto directory = QFileInfo(m_path).dir();
        put(directory.filePath(QStringLiteral(".notes.json.partial")), QByteArray(9000, 'x'));
        QVERIFY(writeDurably(m_path, newText, FileOperations()));
        QCOMPARE(contents(m_path), newText);
        QCOMPARE(directory.entryList(QDir::Files | QDir::Hidden),
            QStringList(QStringLiteral("notes.json")));
    }

private:
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_path;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::FileOperationsTest)
#include "FileOperationsTest.moc"
