#include "settings/SettingsStore.h"

#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/LogLines.h"
#include "support/TableRow.h"
#include "support/Variables.h"

#include <QFile>
#include <QTemporaryDir>

namespace pobblewig {

namespace {

const TimePoint now(std::chrono::seconds(1772352900));

} // namespace

class SettingsStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_log.reset();
        m_log = std::make_unique<LogLines>();
        m_keychain = {};
    }

    void aChangeOutlivesARestart()
    {
        store().update([](AppSettings& settings) {
            settings.mode = CoachMode::studying;
            settings.pausedUntil = now;
        });
        QCOMPARE(store().settings().mode, CoachMode::studying);
        QCOMPARE(store().settings().pausedUntil, now);
        QVERIFY(m_log->lines().isEmpty());
    }

    void passwordManagersComeBackAtEachStartInMemoryOnly()
    {
        const QByteArray text = R"({"excludedBundleIDs": ["com.lastpass.LastPass", "own"]})";
        write(text);
        const auto ids = store().settings().excludedBundleIDs;
        QCOMPARE(ids.size(), 8u);
        QCOMPARE(ids[0], QStringLiteral("com.lastpass.LastPass"));
        QCOMPARE(ids[1], QStringLiteral("own"));
        QCOMPARE(ids[2], QStringLiteral("com.1password.1password"));
        QCOMPARE(contents(path()), text);
    }

    void aDamagedFileIsKeptAsideAndTheProgramStartsAfresh_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("zero bytes") << QByteArray(512, '\0');
        QTest::newRow("no JSON") << QByteArray("mode = focus");
        QTest::newRow("an array") << QByteArray("[]");
        QTest::newRow("wrong type") << QByteArray(R"({"mode": "focus", "memoryEnabled": 1})");
        QTest::newRow("unknown mode") << QByteArray(R"({"mode": "napping"})");
        QTest::newRow("unknown role") << QByteArray(R"({"roles": ["boss"]})");
        QTest::newRow("fraction") << QByteArray(R"({"maxActivitySessions": 1.5})");
        QTest::newRow("nested deep")
            << R"({"x":)" + QByteArray(500, '[') + QByteArray(500, ']') + '}';
    }
    void aDamagedFileIsKeptAsideAndTheProgramStartsAfresh()
    {
        QFETCH(QByteArray, text);
        write(text);
        expectAfresh();
        QCOMPARE(contents(asidePath()), text);
    }

    void aFileCutAnywhereIsKeptAside()
    {
        store().update([](AppSettings& settings) { settings.roles = { AssistantRole::tutor }; });
        const auto whole = contents(path());
        // The last two bytes are the closing brace and a newline that nothing needs.
        for (qsizetype length = 0; length < whole.size() - 1; ++length) {
            m_log.reset();
            m_log = std::make_unique<LogLines>();
            write(whole.first(length));
            expectAfresh();
            QCOMPARE(contents(asidePath()).size(), length);
            QVERIFY(QFile::remove(asidePath()));
        }
    }

    void aHugeFileIsKeptAside()
    {
        write({});
        QVERIFY(QFile::resize(path(), 100'000'000));
        expectAfresh();
        QCOMPARE(QFileInfo(asidePath()).size(), 100'000'000);
    }

    void aChangeThatCannotBeSavedHoldsUntilTheEnd()
    {
        QVERIFY(QDir(m_scratch->path()).mkdir(QStringLiteral("settings.json")));
        auto settings = store();
        QVERIFY(settings.settings() == AppSettings());
        settings.update([](AppSettings& changed) { changed.memoryEnabled = false; });
        QVERIFY(!settings.settings().memoryEnabled);
        QCOMPARE(m_log->lines().size(), 1);
        QVERIFY(m_log->lines()[0].startsWith(u"buddy: failed to persist settings: "));
        QVERIFY(QFileInfo(path()).isDir());
    }

    void aPauseLastsUntilItsTime()
    {
        const auto isPaused = [this](bool indefinitely, std::optional<TimePoint> until) {
            SettingsStore settings(std::nullopt, m_keychain);
            settings.update([&](AppSettings& changed) {
                changed.pausedIndefinitely = indefinitely;
                changed.pausedUntil = until;
            });
            return settings.isPaused(now);
        };
        QVERIFY(!isPaused(false, std::nullopt));
        QVERIFY(!isPaused(false, now));
        QVERIFY(isPaused(false, now + std::chrono::milliseconds(1)));
        QVERIFY(isPaused(true, now - std::chrono::hours(1)));
    }

    void aTokenComesFromTheKeyringOrTheEnvironment_data()
    {
        QTest::addColumn<QString>("keyring");
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("canvas");
        QTest::addColumn<QString>("classroom");
        const auto both =
            "CANVAS_API_TOKEN=c GOOGLE_CLASSROOM_ACCESS_TOKEN=g CLASSROOM_API_TOKEN=a";
        row("neither", "", "", "none", "none");
        row("keyring first", "canvas-api-token=k google-classroom-access-token=l", both, "k", "l");
        row("environment", "", both, "c", "g");
        row("empty in the keyring", "canvas-api-token= google-classroom-access-token=", both, "c",
            "g");
        row("the last", "", "CLASSROOM_API_TOKEN=a", "none", "a");
        row("hidden", "", "CANVAS_API_TOKEN= GOOGLE_CLASSROOM_ACCESS_TOKEN= CLASSROOM_API_TOKEN=a",
            "none", "none");
    }
    void aTokenComesFromTheKeyringOrTheEnvironment()
    {
        QFETCH(QString, keyring);
        QFETCH(QString, environment);
        m_keychain.entries = variables(keyring);
        auto settings = store();
        const auto shown = [](const std::optional<QString>& token) {
            return token.value_or(QStringLiteral("none"));
        };
        QTEST(shown(awaited(settings.canvasAPIToken(variables(environment)))), "canvas");
        QTEST(shown(awaited(settings.classroomAccessToken(variables(environment)))), "classroom");
    }

    void anEmptyTokenIsRemoved()
    {
        auto settings = store();
        awaited(settings.setCanvasAPIToken(QStringLiteral("c")));
        awaited(settings.setClassroomAccessToken(QStringLiteral("g")));
        const Environment expected =
            variables(QStringLiteral("canvas-api-token=c google-classroom-access-token=g"));
        QVERIFY(m_keychain.entries == expected);
        awaited(settings.setCanvasAPIToken(QString()));
        awaited(settings.setClassroomAccessToken(std::nullopt));
        QVERIFY(m_keychain.entries.empty());
    }

    void theUsersCanvasSiteWinsOverTheEnvironmentsAndTheDeployments_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("resolved");
        const auto standard = AppSettings::defaultCanvasBaseURL();
        row("all", "https://u", "CANVAS_BASE_URL=https://e", "https://u");
        row("none chosen", standard, "CANVAS_BASE_URL=https://e", "https://e");
        row("empty variable", standard, "CANVAS_BASE_URL=", "https://d");
    }
    void theUsersCanvasSiteWinsOverTheEnvironmentsAndTheDeployments()
    {
        QFETCH(QString, chosen);
        QFETCH(QString, environment);
        SettingsStore settings(std::nullopt, m_keychain, QStringLiteral("https://d"));
        settings.update([&](AppSettings& changed) { changed.canvasBaseURL = chosen; });
        QTEST(settings.resolvedCanvasBaseURL(variables(environment)), "resolved");
    }

private:
    SettingsStore store()
    {
        DataDirectory directory { QDir(m_scratch->path()) };
        directory.clock = [] { return now; };
        return SettingsStore(directory, m_keychain);
    }

    void expectAfresh()
    {
        QVERIFY(store().settings() == AppSettings());
        QVERIFY(!QFileInfo::exists(path()));
        QCOMPARE(m_log->lines().size(), 1);
        QVERIFY(m_log->lines()[0].startsWith(u"buddy: corrupt store settings.json moved to "));
    }

    QString path() const { return m_scratch->filePath(QStringLiteral("settings.json")); }
    QString asidePath() const { return path() + QStringLiteral(".corrupt-2026-03-01T08-15-00Z"); }

    void write(const QByteArray& bytes) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    std::unique_ptr<LogLines> m_log;
    FakeKeychain m_keychain;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingsStoreTest)
#include "SettingsStoreTest.moc"
