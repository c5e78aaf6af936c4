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
    void passwordManagersComeBackAtEachStartInMemoryOnly()
    {
        const QTemporaryDir scratch;
        const QByteArray text = R"({"excludedBundleIDs": ["com.lastpass.LastPass", "own"]})";
        write(scratch, text);
        const auto ids = store(scratch).settings().excludedBundleIDs;
        QCOMPARE(ids.size(), 8u);
        QCOMPARE(ids[0], QStringLiteral("com.lastpass.LastPass"));
        QCOMPARE(ids[1], QStringLiteral("own"));
        QCOMPARE(ids[2], QStringLiteral("com.1password.1password"));
        QCOMPARE(contents(path(scratch)), text);
    }

    void aDamagedFileIsKeptAsideAndTheProgramStartsAfresh()
    {
        const QTemporaryDir scratch;
        store(scratch).update([](AppSettings& settings) { settings.mode = CoachMode::focus; });
        QByteArrayList texts { QByteArray(512, '\0'), "mode = focus", "[]",
            R"({"mode": "focus", "memoryEnabled": 1})", R"({"mode": "napping"})",
            R"({"roles": ["boss"]})", R"({"maxActivitySessions": 1.5})",
            R"({"x":)" + QByteArray(500, '[') + QByteArray(500, ']') + '}' };
        // The last two bytes are the closing brace and a newline that nothing needs.
        const auto whole = contents(path(scratch));
        QCOMPARE(store(scratch).settings().mode, CoachMode::focus);
        for (qsizetype length = 0; length < whole.size() - 1; ++length)
            texts.append(whole.first(length));
        const auto aside = path(scratch) + QStringLiteral(".corrupt-2026-03-01T08-15-00Z");
        for (const auto& text : texts) {
            write(scratch, text);
            const LogLines log;
            QVERIFY2(store(scratch).settings() == AppSettings(), text);
            QCOMPARE(log.lines().size(), 1);
            QVERIFY(log.lines()[0].startsWith(u"buddy: corrupt store settings.json moved to "));
            QCOMPARE(contents(aside), text);
            QVERIFY(QFile::remove(aside) && !QFile::exists(path(scratch)));
        }
    }

    void aChangeThatCannotBeSavedHoldsUntilTheEnd()
    {
        const QTemporaryDir scratch;
        QVERIFY(QDir().mkdir(path(scratch)));
        const LogLines log;
        auto settings = store(scratch);
        settings.update([](AppSettings& changed) { changed.memoryEnabled = false; });
        QVERIFY(!settings.settings().memoryEnabled);
        QCOMPARE(log.lines().size(), 1);
        QVERIFY(log.lines()[0].startsWith(u"buddy: failed to persist settings: "));
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
        QVERIFY(!isPaused(false, now));
        QVERIFY(isPaused(false, now + std::chrono::milliseconds(1)));
        QVERIFY(isPaused(true, now - std::chrono::hours(1)));
    }

    void aTokenComesFromTheKeyringOrTheEnvironment_data()
    {
        QTest::addColumn<QString>("keyring");
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("tokens");
        const auto both =
            "CANVAS_API_TOKEN=c GOOGLE_CLASSROOM_ACCESS_TOKEN=g CLASSROOM_API_TOKEN=a";
        row("keyring first", "canvas-api-token=k google-classroom-access-token=l", both, "k l");
        row("environment", "canvas-api-token= google-classroom-access-token=", both, "c g");
        row("the last", "", "CLASSROOM_API_TOKEN=a", "none a");
        row("hidden", "", "CANVAS_API_TOKEN= GOOGLE_CLASSROOM_ACCESS_TOKEN= CLASSROOM_API_TOKEN=a",
            "none none");
    }
    void aTokenComesFromTheKeyringOrTheEnvironment()
    {
        QFETCH(QString, keyring);
        QFETCH(QString, environment);
        FakeKeychain keychain(variables(keyring));
        SettingsStore settings(std::nullopt, keychain);
        const auto canvas = awaited(settings.canvasAPIToken(variables(environment)));
        const auto classroom = awaited(settings.classroomAccessToken(variables(environment)));
        const auto none = QStringLiteral("none");
        QTEST(canvas.value_or(none) + u' ' + classroom.value_or(none), "tokens");
    }

    void anEmptyTokenIsRemoved()
    {
        SettingsStore settings(std::nullopt, m_keychain);
        awaited(settings.setCanvasAPIToken(QStringLiteral("c")));
        awaited(settings.setClassroomAccessToken(QStringLiteral("g")));
        const auto kept = QStringLiteral("canvas-api-token=c google-classroom-access-token=g");
        QVERIFY(m_keychain.entries == variables(kept));
        awaited(settings.setCanvasAPIToken(QString()));
        awaited(settings.setClassroomAccessToken(std::nullopt));
        QVERIFY(m_keychain.entries.empty());
    }

    void theUsersCanvasSiteWinsOverTheEnvironmentsAndTheDeployments()
    {
        SettingsStore settings(std::nullopt, m_keychain, QStringLiteral("https://d"));
        const auto given = variables(QStringLiteral("CANVAS_BASE_URL=https://e"));
        const auto empty = variables(QStringLiteral("CANVAS_BASE_URL="));
        QCOMPARE(settings.resolvedCanvasBaseURL(empty), QStringLiteral("https://d"));
        QCOMPARE(settings.resolvedCanvasBaseURL(given), QStringLiteral("https://e"));
        settings.update([](auto& changed) { changed.canvasBaseURL = QStringLiteral("https://u"); });
        QCOMPARE(settings.resolvedCanvasBaseURL(given), QStringLiteral("https://u"));
    }

private:
    SettingsStore store(const QTemporaryDir& scratch)
    {
        DataDirectory directory { QDir(scratch.path()) };
        directory.clock = [] { return now; };
        return SettingsStore(directory, m_keychain);
    }

    static QString path(const QTemporaryDir& scratch)
    {
        return scratch.filePath(QStringLiteral("settings.json"));
    }

    static void write(const QTemporaryDir& scratch, const QByteArray& bytes)
    {
        QFile file(path(scratch));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }

    FakeKeychain m_keychain;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingsStoreTest)
#include "SettingsStoreTest.moc"
