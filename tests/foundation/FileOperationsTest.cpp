#include "foundation/FileOperations.h"

#include "support/FaultyFileOperations.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

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
        QTest::addColumn<QByteArray>("before");
        QTest::newRow("over an old file") << m_oldText;
        QTest::newRow("where there was none") << QByteArray();
    }
    void anyFailingCallLeavesTheOldFileOrTheNew()
    {
        QFETCH(QByteArray, before);
        for (int failingCall = 1; failingCall <= 8; ++failingCall) {
            init();
            if (!before.isEmpty())
                QVERIFY(write(before));
            const FaultyFileOperations operations(failingCall);
            const auto succeeded = write(m_newText, operations);
            QCOMPARE(succeeded, failingCall == 8);
            QCOMPARE(operations.calls() < failingCall, succeeded);
            const auto left = contents();
            QVERIFY(left == m_newText || (left == before && !succeeded));
            QCOMPARE(QFile::exists(m_path), !left.isEmpty());
        }
    }

    void aShortWriteIsContinued()
    {
        QVERIFY(write(m_newText, FaultyFileOperations(3, FaultyFileOperations::Fault::shortWrite)));
        QCOMPARE(contents(), m_newText);
    }

    void aFailureIsNamedAsTheSystemDoes()
    {
        const auto outcome = writeDurably(m_path, m_newText, FaultyFileOperations(3));
        QCOMPARE(outcome.error().description(), QStringLiteral("No space left on device"));
    }

    void aLinkAndPermissionsAreKept()
    {
        QVERIFY(write(m_oldText));
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner;
        QVERIFY(QFile::setPermissions(m_path, permissions));
        const auto link = m_scratch->filePath(QStringLiteral("link.json"));
        QVERIFY(QFile::link(m_path, link));

        QVERIFY(writeDurably(link, m_newText, FileOperations()));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(contents(), m_newText);
        const auto shared = QFile::ReadGroup | QFile::ReadOther;
        QCOMPARE(QFile::permissions(m_path) & (permissions | shared), permissions);
    }

    void whatACrashLeftBehindIsOverwritten()
    {
        QVERIFY(write(m_oldText));
        const auto directory = QFileInfo(m_path).dir();
        QFile partial(directory.filePath(QStringLiteral(".notes.json.partial")));
        QVERIFY(partial.open(QIODevice::WriteOnly));
        partial.write(QByteArray(9000, 'x'));
        partial.close();
        QVERIFY(write(m_newText));
        QCOMPARE(contents(), m_newText);
        QCOMPARE(directory.entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

private:
    bool write(const QByteArray& text, const FileOperations& operations = {}) const
    {
        return writeDurably(m_path, text, operations).has_value();
    }

    QByteArray contents() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const QByteArray m_oldText = QByteArray(3000, 'o');
    const QByteArray m_newText = QByteArray(5000, 'n');
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_path;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::FileOperationsTest)
#include "FileOperationsTest.moc"
