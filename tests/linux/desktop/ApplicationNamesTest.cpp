#include "PobblewigLinux/desktop/ApplicationNames.h"

#include "PobblewigLinux/desktop/ApplicationIdentifiers.h"
#include "support/TableRow.h"

#include <QTemporaryDir>

#include <algorithm>

namespace pobblewig {

class ApplicationNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch.emplace();
        m_names.emplace(DesktopEntries(
            { path("user"), path("system") }, { QStringLiteral("de_CH"), QStringLiteral("de") }));
    }

    void aKnownApplicationHasTheIdentifierOfTheSystem_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("identifier");
        row("a desktop file", "google-chrome", "com.google.Chrome");
        row("a class", "Google-chrome", "com.google.Chrome");
        row("Flatpak", "com.google.Chrome", "com.google.Chrome");
        row("Flatpak, named otherwise", "com.slack.Slack", "com.tinyspeck.slackmacgap");
        row("a desktop file of Snap", "firefox_firefox", "org.mozilla.firefox");
        row("a second copy by Snap", "firefox_dev_firefox", "org.mozilla.firefox");
        row("a unit of Snap", "snap.code.code", "com.microsoft.VSCode");
        row("a line below of its own", "sublime_text", "com.sublimetext.4");
        row("a game", "steam_app_570", "com.valvesoftware.steam");
        row("ourselves", "Pobblewig", "com.pobblewig.app");
        row("unknown", "firefoxy", "");
        row("nothing", "", "");
        row("nothing before the line", "_x", "");
    }
    void aKnownApplicationHasTheIdentifierOfTheSystem()
    {
        QFETCH(QString, name);
        QTEST(ApplicationIdentifiers::identifier(name).value_or(QString()), "identifier");
    }

    void passwordManagersAreExcludedByAnyName()
    {
        const auto excluded = ApplicationIdentifiers::alwaysExcluded();
        for (const auto* name : { "KeePassXC", "org.keepassxc.KeePassXC", "keepassxc_keepassxc",
                 "Seahorse", "org.gnome.seahorse.Application", "kwalletmanager5",
                 "org.kde.kwalletmanager5", "org.gnome.World.Secrets", "org.gnome.PasswordSafe",
                 "Proton Pass", "proton-pass", "me.proton.Pass" }) {
            const auto identifier = ApplicationIdentifiers::identifier(QLatin1String(name));
            QVERIFY2(identifier && std::ranges::count(excluded, *identifier) == 1, name);
        }
    }

    void aWindowIsNamedByItsDesktopFile_data()
    {
        QTest::addColumn<QString>("applicationID");
        QTest::addColumn<QString>("windowClass");
        QTest::addColumn<QString>("instance");
        QTest::addColumn<QString>("application");
        row("by the id that it tells", "org.x.One", "Two", "two", "Eins org.x.One");
        row("by the class that the file tells", "", "two", "org.x.One", "Due three");
        row("class before instance", "", "three-tool", "fourth-1", "Three three-tool");
        row("by the file's id", "", "THREE-tool", "", "Three three-tool");
        row("by the end of the file's id", "", "One", "", "Eins org.x.One");
        row("by the program", "", "Shell", "fourth", "Four fourth-1");
        row("but not by one that runs others", "", "Script", "python3", "Script Script");
        row("a known one with its own name", "", "Navigator", "firefox",
            "Fuchs org.mozilla.firefox");
        row("a known class before all", "", "KeePassXC", "fourth", "Four org.keepassxc.KeePassXC");
        row("in the user's own file", "", "both", "", "Mine both");
        row("taken away by the user", "", "gone", "", "gone gone");
        row("in a folder", "", "kde4-old", "", "Old kde4-old");
        row("without a file", "", "Lone", "", "Lone Lone");
        row("without a class", "", "", "lone", "lone lone");
        row("without anything", "", "", "", "nothing");
        row("of nothing visible", "", "\x01", "", "nothing");
        row("with lines and a turn of direction", "", "a\n\u202Eb", "", "a b a b");
    }
    void aWindowIsNamedByItsDesktopFile()
    {
        write("system/org.x.One", "Name=One\nName[de]=Eins\nName[fr]=Un\nExec=one %U");
        write("system/two", "Name=Two\nStartupWMClass=Nobody");
        write("system/three", "Name=Two\nStartupWMClass=Two\nName[de]=No\nName[de_CH]=Due");
        write("system/three-tool", "Name=Three\nExec=python3 tool.py");
        write("system/fourth-0", "Name=Hidden\nExec=fourth --url\nNoDisplay=true");
        write("system/fourth-1", "Name=Four\nExec=env A=b \"/opt/my apps/fourth\" %u");
        write("system/mozilla", "Name=Fuchs\nExec=/usr/bin/firefox");
        write("system/both", "Name=Theirs");
        write("user/both", "Name=Mine");
        write("system/gone", "Name=Gone");
        write("user/gone", "Name=Gone\nHidden=true");
        write("system/kde4/old", "Name=Old");
        QFETCH(QString, applicationID);
        QFETCH(QString, windowClass);
        QFETCH(QString, instance);
        QTEST(told({ applicationID, windowClass, instance }), "application");
    }

    void aDesktopFileThatComesOrGoesIsNoticed()
    {
        const WindowIdentity window { .windowClass = QStringLiteral("late") };
        QCOMPARE(told(window), QStringLiteral("late late"));
        write("user/late", "Name=Late");
        told({});
        QCOMPARE(told(window), QStringLiteral("Late late"));
        QVERIFY(QFile::remove(path("user/late.desktop")));
        told({});
        QCOMPARE(told(window), QStringLiteral("late late"));
    }

    void aFileOfBadFaithIsPassedOver_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("application");
        const QByteArray entry = "[Desktop Entry]\nType=Application\n";
        const auto file = [](const char* name, const QByteArray& bytes, const char* application) {
            QTest::newRow(name) << bytes << QString::fromLatin1(application);
        };
        file("empty", "", "app app");
        file("no name", entry + "Exec=app", "app app");
        file("another type", "[Desktop Entry]\nType=Link\nName=X", "app app");
        file("another group", "[Other]\nType=Application\nName=X", "app app");
        file("a group after it", entry + "Name=X\n[Desktop Action a]\nName=Y", "X app");
        file("the first name holds", entry + "Name = X \nName=Y\n=\n\n#Name=Z", "X app");
        file("an open quote", entry + "Name=X\r\nExec=\"app", "X app");
        file("too large", entry + "Name=X\n#" + QByteArray(300 * 1024, 'x'), "app app");
    }
    void aFileOfBadFaithIsPassedOver()
    {
        QFETCH(QByteArray, file);
        writeFile("user/app", file);
        QTEST(told({ .windowClass = QStringLiteral("app") }), "application");
    }

private:
    QString path(const char* name) const { return m_scratch->filePath(QLatin1String(name)); }

    void write(const char* name, const char* lines) const
    {
        writeFile(name, QByteArray("[Desktop Entry]\nType=Application\n") + lines);
    }

    void writeFile(const char* name, const QByteArray& bytes) const
    {
        QFile file(path(name) + QStringLiteral(".desktop"));
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    /// "name identifier", or "nothing".
    QString told(const WindowIdentity& window)
    {
        const auto application = m_names->application(window);
        return application ? application->name + u' ' + application->bundleIdentifier
                           : QStringLiteral("nothing");
    }

    std::optional<QTemporaryDir> m_scratch;
    std::optional<ApplicationNames> m_names;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ApplicationNamesTest)
#include "ApplicationNamesTest.moc"
