#include "settings/Environment.h"

#include "support/TableRow.h"

#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace pobblewig {

class EnvironmentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFileReadsAsSystemdWould_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("variables");
        row("lines", "A=1\nB=2\n", "A[1] B[2]");
        row("no newline at the end", "A=1", "A[1]");
        row("space around", " \t A = x y \t\r\n", "A[x y]");
        row("empty value", "A=\nB=2", "A[] B[2]");
        row("equals sign in the value", "A=b=c", "A[b=c]");
        row("comments", "# A=1\n  ; B=2\nC=3 # kept\n#", "C[3 # kept]");
        row("a comment ends with its line", "# a \\\nA=1", "A[1]");
        row("no equals sign", "A\nB=2", "B[2]");
        row("not a name", "1A=1\nexport B=2\nC-D=3\n=4\nÄ=5\n_e1=6", "_e1[6]");
        row("the last holds", "A=1\nA=2", "A[2]");
        row("double quotes", "A=\" x \\\"y\\\" \\\\ \\$ \\n \" ", "A[ x \"y\" \\ $ \\n ]");
        row("single quotes", "A=' \\x \"y\" '", "A[ \\x \"y\" ]");
        row("quotes span lines", "A=\"x\ny\"\nB='x\ny'", "A[x\ny] B[x\ny]");
        row("pieces are joined", "A=\"x\" 'y' z", "A[xyz]");
        row("a quote later is kept", "A=it's\nB=2", "A[it's] B[2]");
        row("a missing quote", "A=\"x\nB=2", "A[x\nB=2]");
        row("continued", "A=x \\\n  y\nB=\"x\\\ny\"", "A[x   y] B[xy]");
        row("escaped", "A=x\\ty\\ \nB=\\", "A[xty ] B[]");
        row("text", "A=größe 👩‍👩‍👧", "A[größe 👩‍👩‍👧]");
        row("nothing", " \n\n", "");
    }
    void aFileReadsAsSystemdWould()
    {
        QFETCH(QString, text);
        QStringList variables;
        for (const auto& [name, value] : EnvironmentFile::parse(text))
            variables.append(QStringLiteral("%1[%2]").arg(name, value));
        QTEST(variables.join(u' '), "variables");
    }

    void aFileThatCannotServeHoldsNothing()
    {
        const QTemporaryDir scratch;
        const auto path = [&](const QString& name) { return scratch.filePath(name); };
        QVERIFY(EnvironmentFile::read(path(QStringLiteral("missing"))).empty());
        QVERIFY(EnvironmentFile::read(scratch.path()).empty());
        // Opening a pipe that nobody writes to would hang.
        const auto pipe = path(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        QVERIFY(EnvironmentFile::read(pipe).empty());
        const auto lines = QByteArray("A=1\n").repeated(16 * 1024);
        QCOMPARE(EnvironmentFile::read(written(path(QStringLiteral("full")), lines)).size(), 1u);
        QVERIFY(EnvironmentFile::read(written(path(QStringLiteral("over")), lines + "B")).empty());
    }

    void aVariableOfTheProcessWinsUnlessItIsEmpty()
    {
        const QTemporaryDir scratch;
        const auto file = written(scratch.filePath(QStringLiteral("environment")),
            "POBBLEWIG_T1=file\nPOBBLEWIG_T2=file\nPOBBLEWIG_T3=file\nPOBBLEWIG_T4=\n");
        const auto tidy = qScopeGuard([] {
            for (const auto* name : { "POBBLEWIG_T1", "POBBLEWIG_T2", "POBBLEWIG_T5" })
                qunsetenv(name);
        });
        qputenv("POBBLEWIG_T1", "process");
        qputenv("POBBLEWIG_T2", "");
        qputenv("POBBLEWIG_T5", "");
        const auto environment = currentEnvironment(file);
        const auto value = [&](const char* name) {
            return variable(environment, QString::fromLatin1(name))
                .value_or(QStringLiteral("absent"));
        };
        QCOMPARE(value("POBBLEWIG_T1"), u"process");
        QCOMPARE(value("POBBLEWIG_T2"), u"file");
        QCOMPARE(value("POBBLEWIG_T3"), u"file");
        QCOMPARE(value("POBBLEWIG_T4"), u"absent");
        QCOMPARE(value("POBBLEWIG_T5"), u"absent");
        QVERIFY(environment.contains(QStringLiteral("POBBLEWIG_T5")));
    }

private:
    static QString written(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("no scratch file");
        return path;
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::EnvironmentTest)
#include "EnvironmentTest.moc"
