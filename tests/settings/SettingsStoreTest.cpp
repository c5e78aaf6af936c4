#include "settings/SettingsStore.h"

#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/JSONObject.h"
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"
#include "support/Variables.h"

namespace pobblewig {

namespace {

using Roles = std::set<AssistantRole>;

const auto fileName = u"settings.json"_s;

} // namespace

class SettingsStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void passwordManagersComeBackAtEachStartInMemoryOnly()
    {
        const QByteArray text = R"({"excludedBundleIDs": ["com.lastpass.LastPass", "own"]})";
        const auto ids = read(text).excludedBundleIDs;
        QCOMPARE(ids.size(), 8u);
        QCOMPARE(ids[0], u"com.lastpass.LastPass");
        QCOMPARE(ids[1], u"own");
        QCOMPARE(ids[2], u"com.1password.1password");
        QCOMPARE(m_scratch.read(fileName), text);
    }

    void whatCannotBeReadOrSavedIsLogged()
    {
        const LogLines log;
        QVERIFY(read(R"({"memoryEnabled": false, "mode": "napping"})") == AppSettings());
        SettingsStore settings(m_scratch.failing(), m_keychain);
        settings.update([](AppSettings& changed) { changed.memoryEnabled = false; });
        QVERIFY(!settings.settings().memoryEnabled);
        QCOMPARE(log.lines().size(), 2);
        QVERIFY(log.lines()[1].startsWith(u"buddy: failed to persist settings: "));
    }

    void eachKeyCanBeAbsentOrNullButNotOfAnotherType()
    {
        AppSettings filled;
        filled.allowedSince.emplace();
        filled.modeRevertAt = filled.pausedUntil = TimePoint();
        filled.lastDailyBriefingDayKey = u"2026-03-01"_s;
        const auto whole = jsonObject(filled);
        QCOMPARE(whole.size(), 42);
        QVERIFY(json::decode<AppSettings>(whole) == filled);
        QVERIFY(json::decode<AppSettings>(QJsonObject()) == AppSettings());
        QJsonObject empty;
        for (const auto& key : whole.keys()) {
            empty[key] = QJsonValue::Null;
            const QJsonArray odd { QJsonArray { 1 } };
            const auto wrong = json::decode<AppSettings>(QJsonObject { { key, odd } });
            QVERIFY(!wrong && wrong.error().path.startsWith(u"$."_s + key));
        }
        QVERIFY(json::decode<AppSettings>(empty) == AppSettings());
    }

    void theRoleOfAnEarlyVersionIsUnderstood()
    {
        const Roles tutor { AssistantRole::tutor };
        const Roles partner { AssistantRole::accountabilityPartner };
        QVERIFY(read(R"({"persona": "codingTutor"})").roles == tutor);
        QVERIFY(read(R"({"persona": "coach"})").roles == partner);
        QVERIFY(read(R"({"persona": "codingTutor", "roles": null})").roles == tutor);
        QVERIFY(read(R"({"persona": "codingTutor", "roles": []})").roles == Roles());
        QVERIFY(read(R"({"persona": 3})").roles == Roles());
        QVERIFY(read(R"({"someday": [1]})").roles == Roles());
    }

    void aTokenComesFromTheKeyringOrTheEnvironment_data()
    {
        columns<QString, QString, QString>("keyring", "environment", "tokens");
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
        QTEST(canvas.value_or(u"none"_s) + u' ' + classroom.value_or(u"none"_s), "tokens");
    }

    void anEmptyTokenIsRemoved()
    {
        SettingsStore settings(std::nullopt, m_keychain);
        awaited(settings.setCanvasAPIToken(u"c"_s));
        awaited(settings.setClassroomAccessToken(u"g"_s));
        const auto kept = u"canvas-api-token=c google-classroom-access-token=g"_s;
        QVERIFY(m_keychain.entries == variables(kept));
        awaited(settings.setCanvasAPIToken(QString()));
        awaited(settings.setClassroomAccessToken(std::nullopt));
        QVERIFY(m_keychain.entries.empty());
    }

    void theUsersCanvasSiteWinsOverTheEnvironmentsAndTheDeployments()
    {
        SettingsStore settings(std::nullopt, m_keychain, u"https://d"_s);
        const auto given = variables(u"CANVAS_BASE_URL=https://e"_s);
        const auto empty = variables(u"CANVAS_BASE_URL="_s);
        QCOMPARE(settings.resolvedCanvasBaseURL(empty), u"https://d");
        QCOMPARE(settings.resolvedCanvasBaseURL(given), u"https://e");
        settings.update([](auto& changed) { changed.canvasBaseURL = u"https://u"_s; });
        QCOMPARE(settings.resolvedCanvasBaseURL(given), u"https://u");
        settings.update([](auto& changed) { changed.canvasBaseURL.clear(); });
        QCOMPARE(settings.resolvedCanvasBaseURL(given), u"https://e");
    }

private:
    AppSettings read(const QByteArray& text)
    {
        m_scratch.write(fileName, text);
        return SettingsStore(m_scratch, m_keychain).settings();
    }

    ScratchDirectory m_scratch;
    FakeKeychain m_keychain;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingsStoreTest)
#include "SettingsStoreTest.moc"
