#include "settings/SettingsWriteLogic.h"

#include "support/JSONObject.h"
#include <QJsonDocument>
#include <QTest>

namespace pobblewig {

namespace {

JSONValue fromText(const QByteArray& text)
{
    return JSONValue::fromJson(QJsonDocument::fromJson("[" + text + "]").array().at(0));
}

QByteArray toText(const QJsonValue& value)
{
    return QJsonDocument(QJsonArray { value }).toJson(QJsonDocument::Compact).chopped(1).sliced(1);
}

/// A row whose value is stored as something else; nothing is stored of a refused one.
void row(const char* key, const char* value, const char* stored, const char* outcome)
{
    QTest::addRow("%s = %s", key, value) << QString::fromLatin1(key) << QByteArray(value)
                                         << QByteArray(stored) << QString::fromUtf8(outcome);
}

void refused(const char* key, const char* value, const char* reason)
{
    row(key, value, "", reason);
}

QString apply(QStringView key, const QByteArray& value, AppSettings& settings)
{
    return SettingsWriteLogic::apply(key.toString(), fromText(value), settings)
        .value_or(QStringLiteral("refused"));
}

} // namespace

class SettingsWriteLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aValueIsStoredAndSummarizedOrRefusedAndExplained_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("outcome");
        row("mode", R"("doNotDisturb")", R"("doNotDisturb")", "mode → Do Not Disturb");
        row("roles", R"(["tutor","accountabilityPartner","tutor"])",
            R"(["accountabilityPartner","tutor"])", "roles → Accountability partner + Tutor");
        row("roles", "[]", "[]", "roles → none");
        row("companionPersona", R"("\n DEADPANROOMMATE ")", R"("deadpanRoommate")",
            "persona → Deadpan Roommate");
        row("mascot", R"("a mouse")", R"("mouse")", "form → Mouse (Original)");
        row("mascot", R"(" An Axolotl\n")", R"("axolotl")", "form → Axolotl (Golden)");
        row("mascotColorScheme", R"("white")", R"("white")", "color scheme → White");
        row("pausedIndefinitely", "true", "true", "observation pause → on");
        row("canvasBaseURL", "\"https://x\"", "\"https://x\"", "Canvas URL → https://x");
        row("classroomDeadlineRemindersEnabled", "false", "false",
            "classroomDeadlineRemindersEnabled → off");
        row("canvasSyncIntervalMinutes", "5", "15", "canvasSyncIntervalMinutes → 15 min");
        row("classroomSyncIntervalMinutes", "59.5", "60", "classroomSyncIntervalMinutes → 60 min");
        row("calendarSyncIntervalMinutes", "1e300", "360", "calendarSyncIntervalMinutes → 360 min");
        row("cloudSyncIntervalMinutes", "121", "120", "cloudSyncIntervalMinutes → 120 min");
        row("canvasDeadlineReminderHours", "-1", "6", "canvasDeadlineReminderHours → 6h");
        row("classroomDeadlineReminderHours", "73", "72", "classroomDeadlineReminderHours → 72h");
        row("maxActivitySessions", "99", "100", "maxActivitySessions → 100");
        row("activityRetentionDays", "91", "90", "activityRetentionDays → 90 days");

        const auto modes = "mode must be one of: openEnded, focus, studying, relaxing, exercising, "
                           "doNotDisturb";
        refused("mode", R"("Focus")", modes);
        const auto roles = "roles must be an array of: accountabilityPartner, tutor";
        refused("roles", R"(["tutor","friend"])", roles);
        refused("companionPersona", R"("deadpan roommate")",
            "companionPersona must be one of: classic, deadpanRoommate, doomedCreature, "
            "judgmentalAnimal, allergicToSincerity, devotedPet");
        refused("mascot", R"("skrit")", "mascot must be one of: mouse, axolotl, meme");
        refused("mascot", R"("a  mouse")", "mascot must be one of: mouse, axolotl, meme");
        refused("mascotColorScheme", R"("pink")",
            "mascotColorScheme must be one of: original, brown, white (for the current mascot)");
        refused("pausedIndefinitely", "0", "pausedIndefinitely must be a boolean");
        refused("cloudSyncEnabled", R"("true")", "cloudSyncEnabled must be a boolean");
        refused("maxActivitySessions", R"("100")", "maxActivitySessions must be a number");
        const auto excluded = "excludedBundleIDs must be an array of bundle-ID strings";
        refused("excludedBundleIDs", R"(["a", " \n"])", excluded);
        const auto canvas = "canvasBaseURL must be an https:// URL";
        refused("canvasBaseURL", "\"https://\"", canvas);
        refused("canvasBaseURL", "\"http://x\"", canvas);
        const auto sources =
            R"(appDataSources must be an array of {"name":"...","path":"..."} entries)";
        refused("appDataSources", R"([{"name":"a","path":" "}])", sources);
        refused("%1", "1", "'%1' is not a setting the assistant may change");
    }
    void aValueIsStoredAndSummarizedOrRefusedAndExplained()
    {
        QFETCH(QString, key);
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, stored);
        AppSettings settings;
        const auto before = jsonObject(settings);
        const auto refusal = SettingsWriteLogic::validate(key, fromText(value), settings);
        const auto outcome = SettingsWriteLogic::apply(key, fromText(value), settings);
        QTEST(outcome ? *outcome : outcome.error().reason, "outcome");
        QCOMPARE(refusal, outcome ? std::nullopt : std::optional(outcome.error().reason));
        QCOMPARE(outcome.has_value(), !stored.isEmpty());
        auto after = jsonObject(settings);
        if (outcome) {
            QCOMPARE(toText(after[key]), stored);
            // A new mascot may bring new colours; nothing else changes with a key.
            for (const auto& own : { key, QStringLiteral("mascotColorScheme") })
                after[own] = before[own];
        }
        QVERIFY(after == before);
    }

    void everyKeyIsAField()
    {
        const auto keys = SettingsWriteLogic::allowedKeys();
        const auto fields = jsonObject(AppSettings());
        for (const auto& key : keys + SettingsWriteLogic::alwaysConfirmKeys())
            QVERIFY2(fields.contains(key) && keys.contains(key), qPrintable(key));
    }

    void aModeLosesItsEndAndAPauseItsTime()
    {
        AppSettings settings;
        settings.modeRevertAt = settings.pausedUntil = TimePoint(std::chrono::seconds(1));
        apply(u"mode", R"("focus")", settings);
        apply(u"pausedIndefinitely", "true", settings);
        QVERIFY(!settings.modeRevertAt && settings.pausedUntil);
        apply(u"pausedIndefinitely", "false", settings);
        QVERIFY(!settings.pausedUntil);
    }

    void colorsBelongToTheCurrentMascot()
    {
        AppSettings settings;
        settings.mascotColorScheme = QStringLiteral("brown");
        QCOMPARE(apply(u"mascot", R"("MEME")", settings), QStringLiteral("form → Meme (Brown)"));
        QCOMPARE(settings.mascotColorScheme, QStringLiteral("brown"));
        apply(u"mascot", R"("axolotl")", settings);
        QCOMPARE(settings.mascotColorScheme, QStringLiteral("golden"));
        QVERIFY(apply(u"mascotColorScheme", R"("pink")", settings) != u"refused");
        QCOMPARE(apply(u"mascotColorScheme", R"("brown")", settings), QStringLiteral("refused"));
    }

    void passwordManagersStayExcluded()
    {
        AppSettings settings;
        QCOMPARE(
            apply(u"excludedBundleIDs", R"(["com.dashlane.dashlanephonefinal", "a"])", settings),
            QStringLiteral("excluded apps → 8 bundle IDs"));
        QCOMPARE(settings.excludedBundleIDs[1], QStringLiteral("a"));
        apply(u"excludedBundleIDs", "[]", settings);
        QVERIFY(settings.excludedBundleIDs == AppSettings::defaultExcludedBundleIDs());
    }

    void dataSourcesAreBuiltAnew()
    {
        AppSettings settings;
        settings.appDataSources = { { QUuid::createUuid(), {}, {} } };
        const auto folders = R"([{"name":" Notes ","path":"/n\n"},{"name":"Same","path":"/n"}])";
        QCOMPARE(
            apply(u"appDataSources", folders, settings), QStringLiteral("app data sources → 2"));
        const auto first = settings.appDataSources.at(0);
        QVERIFY((first
            == AppDataSource { first.id, QStringLiteral("Notes"), QStringLiteral("/n"), true }));
        QVERIFY(!first.id.isNull() && first.id != settings.appDataSources.at(1).id);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingsWriteLogicTest)
#include "SettingsWriteLogicTest.moc"
