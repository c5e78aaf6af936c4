#include "PobblewigLinux/desktop/Autostart.h"

#include "support/TableRow.h"

#include <QProcess>
#include <QTemporaryDir>

namespace pobblewig {

class AutostartTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch.emplace(); }

    void whatIsWrittenStartsThisProgram_data()
    {
        QTest::addColumn<QString>("name");
        row("plain", "pobblewig");
        row("blanks", "my own pobblewig");
        row("what shells and desktop files treat specially", "p`o$b\\b\"l'e~w&i;g#*");
        row("per cent signs", "100%% p%f %");
        row("another script", "Поблвиг");
    }
    void whatIsWrittenStartsThisProgram()
    {
        QFETCH(QString, name);
        const auto program = m_scratch->filePath(name);
        QFile script(program);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho started > \"$(dirname \"$0\")/started\"\n");
        script.setPermissions(script.permissions() | QFile::ExeOwner);
        script.close();

        Autostart autostart(directory(), program);
        QVERIFY(!autostart.isEnabled());
        QVERIFY(autostart.setEnabled(true));
        QVERIFY(autostart.isEnabled());
        QCOMPARE(QProcess::execute(QStringLiteral("gio"), { QStringLiteral("launch"), file() }), 0);
        QTRY_VERIFY(QFile::exists(m_scratch->filePath(QStringLiteral("started"))));
        QVERIFY(autostart.setEnabled(false));
        QVERIFY(!QFile::exists(file()));
    }

    void theDesktopsOwnSettingsCount_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("isEnabled");
        row("nothing said", "", true);
        row("taken away", "Hidden=true", false);
        row("switched off", "X-GNOME-Autostart-enabled=false", false);
        row("switched on", "X-GNOME-Autostart-enabled=true", true);
        row("of another group", "[Other]\nHidden=true", true);
    }
    void theDesktopsOwnSettingsCount()
    {
        Autostart autostart(directory(), QStringLiteral("/usr/bin/pobblewig"));
        QVERIFY(autostart.setEnabled(true));
        QFile written(file());
        QVERIFY(written.open(QIODevice::Append));
        QFETCH(QString, line);
        written.write(line.toUtf8());
        written.close();
        QTEST(autostart.isEnabled(), "isEnabled");
        QVERIFY(autostart.setEnabled(true));
        QVERIFY(autostart.isEnabled());
    }

    void whatCannotBeWrittenIsSaid()
    {
        Autostart broken(directory(), QStringLiteral("/usr/bin/a\nExec=b"));
        QVERIFY(!broken.setEnabled(true));
        QVERIFY(!QFile::exists(file()));
        QFile obstacle(directory().path());
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        Autostart autostart(directory(), QStringLiteral("/usr/bin/pobblewig"));
        const auto outcome = autostart.setEnabled(true);
        QVERIFY(!outcome);
        QVERIFY(!outcome.error().description().isEmpty());
        QVERIFY(!autostart.isEnabled());
        QVERIFY(autostart.setEnabled(false));
    }

private:
    QDir directory() const { return { m_scratch->filePath(QStringLiteral("autostart")) }; }
    QString file() const
    {
        return directory().filePath(QStringLiteral("com.pobblewig.app.desktop"));
    }

    std::optional<QTemporaryDir> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AutostartTest)
#include "AutostartTest.moc"
