#include "folders/AppDataAccessLogic.h"

#include "support/TableRow.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace Logic = AppDataAccessLogic;

class AppDataAccessLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void secretsAreKnownByTheirNames()
    {
        for (const auto* name :
            { "id_rsa", "ID_RSA.pub", "github_ed25519", "server.pem", "tls.KEY", "Passwords.kdbx",
                "work-private-key.txt", "api key.txt", ".env", ".env.local", "prod.env", ".envrc",
                "environment", "terraform.tfvars", ".npmrc", "credentials", "aws_credentials.csv",
                ".git-credentials", "client_secret_42.json", ".netrc", "auth.json", "secrets.yaml",
                "passwords.txt", "shadow-", "token", "token.json", "deploy_token.txt",
                "github.token", "cookies.sqlite-wal", "Login Data", "Login Data For Account",
                "Local State", "logins.json", "key4.db", "History", "bitwarden_export_2026.json",
                "login.keyring", "github-recovery-codes.txt", ".bash_history", ".zsh_history.bak",
                "fish_history", ".viminfo", "id_rsa.old~", "server.pem.bak", ".id_rsa.swp",
                "passwords.txt.", "id_rsa ", "ｉｄ_rsa", "id_\u200brsa", ".ENV",
                "passwords (1).csv", "my passwords 2026.txt", "api_key_openai.txt",
                "wallet seed.txt", "key.pem.1", "server.key.txt", "server.key.2026.bak",
                "token backup (2).txt", "wifi password home.md", "gradle.properties" })
            QVERIFY2(Logic::isDenied(QString::fromUtf8(name)), name);
    }

    void ordinaryNotesAreNot()
    {
        for (const auto* name : { "keynote.txt", "monkey.md", "tokenization.md", "environment.md",
                 "history.md", "secretary.txt", "secret-garden.md", "key.md", "keys.md", "env.md",
                 "christmas-cookies.txt", "public-and-private-key-cryptography.md", "passport.txt",
                 "token_economy.md", "page.agenda", "image.pngp", "", ".", "credit.md",
                 "cookiesandcream.sql", "notes.txt~", "accessible-keys-of-piano.md" })
            QVERIFY2(!Logic::isDenied(QString::fromUtf8(name)), name);
    }

    void aPathIsDeniedByItsFileOrAFolderOnTheWay_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("denied");
        row("folder", "home/.ssh/config", ".ssh");
        row("repository", "thesis/.git/config", ".git");
        row("build settings", ".m2/settings.xml", ".m2");
        row("folder in capitals", ".Password-Store/shop/x", ".Password-Store");
        row("browser", ".config/google-chrome-beta/Default/x", "google-chrome-beta");
        row("file", "notes/.env", ".env");
        row("file with a folder's name", "notes/.ssh", "");
        row("folder with a file's name", "history/1789.md", "");
        row("left again", ".ssh/../notes.txt", "");
        row("entered sideways", "a/../.aws/./config", ".aws");
    }
    void aPathIsDeniedByItsFileOrAFolderOnTheWay()
    {
        QFETCH(QString, path);
        QTEST(Logic::deniedPart(path).value_or(QString()), "denied");
    }

    void theTailIsTheLastLines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("total");
        QTest::addColumn<int>("shown");
        row("nothing", QByteArray(), QString(), 0, 0);
        row("fewer lines", QByteArray("a\nb"), u"a\nb"_s, 2, 2);
        row("as many", QByteArray("a\nb\nc\n"), u"a\nb\nc"_s, 3, 3);
        row("one more", QByteArray("a\nb\nc\nd"), u"b\nc\nd"_s, 4, 3);
        row("empty lines", QByteArray("a\n\n\n\n"), u"\n\n"_s, 4, 3);
        row("one empty line", QByteArray("\n"), QString(), 1, 1);
        row("broken characters", QByteArray("\xff\n\xc3\xa4"), u"\ufffd\nä"_s, 2, 2);
        row("just fits", QByteArray("a\nbbbb\ncccc"), u"bbbb\ncccc"_s, 3, 2);
        row("one letter too many", QByteArray("a\nbbbbb\ncccc"), u"cccc"_s, 3, 1);
        row("a long line", QByteArray("a\nbbbbbbbbbb\n"), u"bbbbbbbb…"_s, 2, 1);
    }
    void theTailIsTheLastLines()
    {
        QFETCH(QByteArray, bytes);
        const auto tail = Logic::tail(bytes, 3, 9);
        QTEST(tail.text, "text");
        QTEST(tail.total, "total");
        QTEST(tail.shown, "shown");
    }

    void onlyALoneTildeIsTheHome()
    {
        const auto expanded = [](QStringView path) {
            return Logic::expandTilde(path.toString(), u"/home/mia"_s);
        };
        QCOMPARE(expanded(u"~"), u"/home/mia");
        QCOMPARE(expanded(u"~/notes"), u"/home/mia/notes");
        for (const auto* path : { u"~root/notes", u"/tmp/~", u"" })
            QCOMPARE(expanded(path), path);
    }

    void aNulBeyondTheFirstBytesIsNotLookedFor()
    {
        auto bytes = QByteArray(8192, 'a') + '\0';
        QVERIFY(Logic::looksLikeText(bytes));
        bytes[8191] = '\0';
        QVERIFY(!Logic::looksLikeText(bytes));
    }

    void aListingKeepsTheNewestAndCountsTheRest()
    {
        AppDataListing listing(3);
        for (int number = 0; number < 100'000; ++number)
            listing.add(
                { QString::number(number), false, TimePoint(std::chrono::seconds(number)) });
        listing.add({ .name = u"undated"_s });
        listing.add({ u"again"_s, true, TimePoint(std::chrono::seconds(99'998)) });
        QStringList lines;
        for (const auto& entry : listing.newestFirst())
            lines.append(Logic::listingLine(entry));
        QCOMPARE(lines,
            QStringList({ u"99999 — 1970-01-02T03:46:39Z"_s, u"99998 — 1970-01-02T03:46:38Z"_s,
                u"again/ — 1970-01-02T03:46:38Z"_s }));
        QCOMPARE(listing.omitted(), 99'999);
    }

    void aNameCannotForgeALine()
    {
        const auto name = u"a\nb\u2028c\u202e"_s + QString(300, u'x');
        const auto line = Logic::listingLine({ .name = name });
        QVERIFY(line.startsWith(u"a b cxx"));
        QVERIFY(line.endsWith(u"x… — unknown date"));
        QVERIFY(line.size() < 250);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AppDataAccessLogicTest)
#include "AppDataAccessLogicTest.moc"
