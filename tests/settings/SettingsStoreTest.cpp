#include "settings/SettingsStore.h"

#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/JSONObject.h"
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
    void init() { m_scratch = std::make_unique<QTemporaryDir>(); }

    void passwordManagersComeBackAtEachStartInMemoryOnly()
    {
        const QByteArray text = R"({"excludedBundleIDs": ["com.lastpass.LastPass", "own"]})";
        write(text);
        const auto ids = store().settings().excludedBundleIDs;
        QCOMPARE(ids.size(), 8u);
        QCOMPARE(ids[0], QStringLiteral("com.lastpass.LastPass"));
        QCOMPARE(ids[1], QStringLiteral("own"));
        QCOMPARE(ids[2], QStringLiteral("com.1password.1password"));
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll() == text);
    }

    void whatCannotBeReadOrSavedCostsNoMoreThanThis()
    {
        const LogLines log;
        write(R"({"memoryEnabled": false, "mode": "napping"})");
        QVERIFY(store().settings() == AppSettings());
        QVERIFY(QDir().mkdir(path()));
        auto settings = store();
        settings.update([](AppSettings& changed) { changed.memoryEnabled = false; });
        QVERIFY(!settings.settings().memoryEnabled);
        QCOMPARE(log.lines().size(), 2);
        QVERIFY(log.lines()[1].startsWith(u"buddy: failed to persist settings: "));
    }

    void eachKeyCanBeAbsentOrNullButNotOfAnotherType()
    {
        AppSettings filled;
        filled.modeRevertAt = filled.pausedUntil = now;
        filled.lastDailyBriefingDayKey = QStringLiteral("2026-03-01");
        const auto whole = jsonObject(filled);
        QCOMPARE(whole.size(), 37);
        QVERIFY(json::decode<AppSettings>(whole) == filled);
        QVERIFY(json::decode<AppSettings>(QJsonObject()) == AppSettings());
        QJsonObject empty;
        for (const auto& key : whole.keys()) {
            empty[key] = QJsonValue::Null;
            const auto wrong =
                json::decode<AppSettings>(QJsonObject { { key, QJsonArray { QJsonArray { 1 } } } });
            QVERIFY(!wrong && wrong.error().path.startsWith(QStringLiteral("$.") + key));
        }
        QVERIFY(json::decode<AppSettings>(empty) == AppSettings());
    }

    void theRoleOfAnEarlyVersionIsUnderstood()
    {
        using Roles = std::set<AssistantRole>;
        const std::map<QByteArray, Roles> files {
            { R"({"persona": "codingTutor"})", { AssistantRole::tutor } },
            { R"({"persona": "coach"})", { AssistantRole::accountabilityPartner } },
            { R"({"persona": "codingTutor", "roles": null})", { AssistantRole::tutor } },
            { R"({"persona": "codingTutor", "roles": []})", {} },
            { R"({"persona": 3})", {} },
            { R"({"someday": [1]})", {} },
        };
        for (const auto& [text, roles] : files) {
            write(text);
            QVERIFY2(store().settings().roles == roles, text);
        }
    }

    void aTokenComesFromTheKeyringOrTheEnvironment_data()
    {
        for (const auto* column : { "keyring", "environment", "tokens" })
            QTest::addColumn<QString>(column);
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
        const auto resolved = [&](const QString& environment) {
            return settings.resolvedCanvasBaseURL(variables(environment));
        };
        const auto given = QStringLiteral("CANVAS_BASE_URL=https://e");
        QCOMPARE(resolved(QStringLiteral("CANVAS_BASE_URL=")), QStringLiteral("https://d"));
        QCOMPARE(resolved(given), QStringLiteral("https://e"));
        settings.update([](auto& changed) { changed.canvasBaseURL = QStringLiteral("https://u"); });
        QCOMPARE(resolved(given), QStringLiteral("https://u"));
    }

private:
    SettingsStore store()
    {
        DataDirectory directory { QDir(m_scratch->path()) };
        directory.clock = [] { return now; };
        return SettingsStore(directory, m_keychain);
    }

    QString path() const { return m_scratch->filePath(QStringLiteral("settings.json")); }

    void write(const QByteArray& bytes) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    FakeKeychain m_keychain;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingsStoreTest)
#include "SettingsStoreTest.moc"
