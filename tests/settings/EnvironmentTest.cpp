#include "settings/Environment.h"

#include "settings/EnvironmentWriting.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

#include <sys/stat.h>

namespace pobblewig {

class EnvironmentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFileReadsAsSystemdWould_data()
    {
        columns<QString, QString>("text", "variables");
        row("no newline at the end", "A=1\nB=2", "A[1] B[2]");
        row("space around", " \t A = x y \t\r\n", "A[x y]");
        row("empty value", "A=\nB=2", "A[] B[2]");
        row("equals sign in the value", "A=b=c", "A[b=c]");
        row("comments", "# A=1\n  ; B=2\nC=3 # kept\n#", "C[3 # kept]");
        row("a comment ends with its line", "# a \\\nA=1", "A[1]");
        row("not a name", "1A\n1A=1\nexport B=2\nC-D=3\n=4\nÄ=5\n_e1=6", "_e1[6]");
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
    }
    void aFileReadsAsSystemdWould()
    {
        QFETCH(QString, text);
        QStringList variables;
        for (const auto& [name, value] : EnvironmentFile::parse(text))
            variables.append(u"%1[%2]"_s.arg(name, value));
        QTEST(variables.join(u' '), "variables");
    }

    void aFileThatCannotServeHoldsNothing()
    {
        const auto path = m_scratch.path(u"environment"_s);
        QVERIFY(EnvironmentFile::read(path).empty());
        QVERIFY(EnvironmentFile::read(m_scratch.path(u"."_s)).empty());
        const auto lines = QByteArray("A=1\n").repeated(16 * 1024);
        m_scratch.write(u"environment"_s, lines);
        QCOMPARE(EnvironmentFile::read(path).size(), 1u);
        m_scratch.write(u"environment"_s, lines + "B");
        QVERIFY(EnvironmentFile::read(path).empty());
        // Opening a pipe that nobody writes to would hang.
        QVERIFY(QFile::remove(path));
        QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
        QVERIFY(EnvironmentFile::read(path).empty());
    }

    void aVariableOfTheProcessWinsUnlessItIsEmpty()
    {
        const auto path = m_scratch.path(u"variables"_s);
        m_scratch.write(u"variables"_s,
            "POBBLEWIG_T1=file\nPOBBLEWIG_T2=file\nPOBBLEWIG_T3=file\nPOBBLEWIG_T4=\n");
        qputenv("POBBLEWIG_T1", "process");
        qputenv("POBBLEWIG_T2", "");
        const auto environment = currentEnvironment(path);
        QStringList values;
        for (const auto* name : { u"POBBLEWIG_T1", u"POBBLEWIG_T2", u"POBBLEWIG_T3" })
            values.append(variable(environment, QString::fromUtf16(name)).value_or(QString()));
        QCOMPARE(values.join(u' '), u"process file file");
        QVERIFY(!variable(environment, u"POBBLEWIG_T4"_s));
    }

    void theDemoModelGivesWayToTheUsersOwn_data()
    {
        columns<QByteArray, QString>("file", "main");
        row("none", QByteArray("MAIN_MODEL_API_KEY=sk-own\n"), "http://demo/v1 demo model demo");
        row("one", QByteArray("MAIN_MODEL_ID=owl\nMAIN_MODEL_API_KEY=sk-own\n"), " owl sk-own");
    }
    void theDemoModelGivesWayToTheUsersOwn()
    {
        QFETCH(QByteArray, file);
        qputenv("POBBLEWIG_DEMO_MODEL_URL", "http://demo/v1");
        m_scratch.write(u"variables"_s, file);
        const auto environment = currentEnvironment(m_scratch.path(u"variables"_s));
        QStringList values;
        for (const auto* name : { u"MAIN_MODEL_BASE_URL", u"MAIN_MODEL_ID", u"MAIN_MODEL_API_KEY" })
            values.append(variable(environment, QString::fromUtf16(name)).value_or(QString()));
        QTEST(values.join(u' '), "main");
    }

    void valuesAreWrittenWhereTheyWin_data()
    {
        columns<QString, QString>("text", "written");
        row("an empty file", "", "# Chosen in Pobblewig's settings\nM=\"new \\\"\\$1\\\"\"\n");
        row("others stay", "# mine\nM=old\nA='x\ny'",
            "# mine\nM=old\nA='x\ny'\n# Chosen in Pobblewig's settings\nM=\"new \\\"\\$1\\\"\"\n");
        row("own lines are replaced",
            "A=1\n# Chosen in Pobblewig's settings\nB=\"2\"\nM=\"older\"\n",
            "A=1\n# Chosen in Pobblewig's settings\nB=\"2\"\nM=\"new \\\"\\$1\\\"\"\n");
        row("a quote that does not end", "A=\"x\n", "nothing");
        row("a line that goes on", "A=x\\", "nothing");
    }
    void valuesAreWrittenWhereTheyWin()
    {
        QFETCH(QString, text);
        const auto value = u"new \"$1\""_s;
        const auto changed = EnvironmentWriting::changed(text, { { u"M"_s, value } });
        QTEST(changed.value_or(u"nothing"_s), "written");
        if (!changed)
            return;
        QCOMPARE(EnvironmentFile::parse(*changed).at(u"M"_s), value);
        const auto back = EnvironmentWriting::changed(*changed, { { u"M"_s, QString() } });
        QVERIFY(back && !back->contains(u"new"));
    }

    void aNewFileIsForThisUserOnly()
    {
        const auto path = m_scratch.path(u"config/Pobblewig/environment"_s);
        const Environment values { { u"M"_s, u"owl"_s } };
        QVERIFY(EnvironmentWriting::write(path, values, FileOperations()));
        QCOMPARE(EnvironmentFile::read(path), values);
        QVERIFY(!(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther)));
        m_scratch.write(u"broken"_s, "A=\"");
        QVERIFY(!EnvironmentWriting::write(m_scratch.path(u"broken"_s), values, FileOperations()));
    }

private:
    ScratchDirectory m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::EnvironmentTest)
#include "EnvironmentTest.moc"
