#include "settings/SettingsWriteLogic.h"

#include "support/JSONObject.h"
#include <QJsonDocument>
#include <QTest>

namespace pobblewig {

namespace {

QJsonValue fromText(const QByteArray& text)
{
    return QJsonDocument::fromJson("[" + text + "]").array().at(0);
}

QByteArray toText(const QJsonValue& value)
{
    return QJsonDocument(QJsonArray { value }).toJson(QJsonDocument::Compact).chopped(1).sliced(1);
}

void acceptedRow(const char* key, const char* value, const char* stored, const char* summary)
{
    QTest::addRow("%s = %s", key, value) << QString::fromLatin1(key) << QByteArray(value)
                                         << QByteArray(stored) << QString::fromUtf8(summary);
}

void refusedRow(const char* key, const char* value, const char* reason)
{
    QTest::addRow("%s = %s", key, value)
        << QString::fromLatin1(key) << QByteArray(value) << QString::fromUtf8(reason);
}

} // namespace

class SettingsWriteLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAcceptedValueIsStoredAndSummarized_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("summary");
        acceptedRow("mode", R"("doNotDisturb")", R"("doNotDisturb")", "mode → Do Not Disturb");
        acceptedRow("roles", R"(["tutor","accountabilityPartner","tutor"])",
            R"(["accountabilityPartner","tutor"])", "roles → Accountability partner + Tutor");
        acceptedRow("roles", "[]", "[]", "roles → none");
        acceptedRow("companionPersona", R"("\n DEADPANROOMMATE ")", R"("deadpanRoommate")",
            "persona → Deadpan Roommate");
        acceptedRow("mascot", R"("a mouse")", R"("mouse")", "form → Mouse (Original)");
        acceptedRow("mascot", R"(" An Axolotl\n")", R"("axolotl")", "form → Axolotl (Golden)");
        acceptedRow("mascot", R"("MEME")", R"("meme")", "form → Meme (Original)");
        acceptedRow("mascotColorScheme", R"("white")", R"("white")", "color scheme → White");
        acceptedRow("pausedIndefinitely", "true", "true", "observation pause → on");
        acceptedRow("canvasBaseURL", "\"https://x\"", "\"https://x\"", "Canvas URL → https://x");
        acceptedRow("canvasSyncEnabled", "true", "true", "canvasSyncEnabled → on");
        acceptedRow("classroomDeadlineRemindersEnabled", "false", "false",
            "classroomDeadlineRemindersEnabled → off");
        acceptedRow("canvasSyncIntervalMinutes", "5", "15", "canvasSyncIntervalMinutes → 15 min");
        acceptedRow(
            "canvasSyncIntervalMinutes", "1000", "360", "canvasSyncIntervalMinutes → 360 min");
        acceptedRow(
            "canvasSyncIntervalMinutes", "59.5", "60", "canvasSyncIntervalMinutes → 60 min");
        acceptedRow(
            "calendarSyncIntervalMinutes", "1e300", "360", "calendarSyncIntervalMinutes → 360 min");
        acceptedRow("cloudSyncIntervalMinutes", "121", "120", "cloudSyncIntervalMinutes → 120 min");
        acceptedRow("canvasDeadlineReminderHours", "-1", "6", "canvasDeadlineReminderHours → 6h");
        acceptedRow(
            "classroomDeadlineReminderHours", "73", "72", "classroomDeadlineReminderHours → 72h");
        acceptedRow("maxActivitySessions", "99", "100", "maxActivitySessions → 100");
        acceptedRow("activityRetentionDays", "91", "90", "activityRetentionDays → 90 days");
    }
    void anAcceptedValueIsStoredAndSummarized()
    {
        QFETCH(QString, key);
        QFETCH(QByteArray, value);
        AppSettings settings;
        const auto before = jsonObject(settings);
        const auto given = JSONValue::fromJson(fromText(value));
        QCOMPARE(SettingsWriteLogic::validate(key, given, settings), std::nullopt);
        QTEST(SettingsWriteLogic::apply(key, given, settings).value_or(QString()), "summary");
        auto after = jsonObject(settings);
        QTEST(toText(after.take(key)), "stored");
        // A new mascot may bring new colours; nothing else changes with a key.
        for (const auto& other : { key, QStringLiteral("mascotColorScheme") })
            after.insert(other, before.value(other));
        QVERIFY(after == before);
    }

    void aRefusedValueChangesNothingAndIsExplained_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("reason");
        const auto modes = "mode must be one of: openEnded, focus, studying, relaxing, exercising, "
                           "doNotDisturb";
        refusedRow("mode", R"("Focus")", modes);
        refusedRow("mode", "1", modes);
        const auto roles = "roles must be an array of: accountabilityPartner, tutor";
        refusedRow("roles", R"("tutor")", roles);
        refusedRow("roles", R"(["tutor","friend"])", roles);
        refusedRow("companionPersona", R"("deadpan roommate")",
            "companionPersona must be one of: classic, deadpanRoommate, doomedCreature, "
            "judgmentalAnimal, allergicToSincerity, devotedPet");
        const auto mascots = "mascot must be one of: mouse, axolotl, meme";
        refusedRow("mascot", R"("skrit")", mascots);
        refusedRow("mascot", R"("a  mouse")", mascots);
        refusedRow("mascot", R"("the mouse")", mascots);
        refusedRow("mascotColorScheme", R"("pink")",
            "mascotColorScheme must be one of: original, brown, white (for the current mascot)");
        refusedRow("pausedIndefinitely", "0", "pausedIndefinitely must be a boolean");
        refusedRow("cloudSyncEnabled", R"("true")", "cloudSyncEnabled must be a boolean");
        refusedRow("maxActivitySessions", R"("100")", "maxActivitySessions must be a number");
        const auto excluded = "excludedBundleIDs must be an array of bundle-ID strings";
        refusedRow("excludedBundleIDs", R"(["a", " \n"])", excluded);
        refusedRow("excludedBundleIDs", R"("a")", excluded);
        const auto canvas = "canvasBaseURL must be an https:// URL";
        refusedRow("canvasBaseURL", "\"https://\"", canvas);
        refusedRow("canvasBaseURL", "\"http://x\"", canvas);
        refusedRow("canvasBaseURL", "\" https://x\"", canvas);
        const auto sources =
            R"(appDataSources must be an array of {"name":"...","path":"..."} entries)";
        refusedRow("appDataSources", R"([{"name":"a"}])", sources);
        refusedRow("appDataSources", R"([{"name":"a","path":" "}])", sources);
        refusedRow("appDataSources", R"({"name":"a","path":"/a"})", sources);
        refusedRow(
            "memoryEnabled", "false", "'memoryEnabled' is not a setting the assistant may change");
        refusedRow("%1", "false", "'%1' is not a setting the assistant may change");
    }
    void aRefusedValueChangesNothingAndIsExplained()
    {
        QFETCH(QString, key);
        QFETCH(QByteArray, value);
        AppSettings settings;
        const auto given = JSONValue::fromJson(fromText(value));
        QTEST(
            SettingsWriteLogic::validate(key, given, settings).value_or(QStringLiteral("accepted")),
            "reason");
        const auto outcome = SettingsWriteLogic::apply(key, given, settings);
        QVERIFY(!outcome);
        QTEST(outcome.error().reason, "reason");
        QVERIFY(settings == AppSettings());
    }

    void everyKeyIsAFieldAndRefusesNothing()
    {
        const auto keys = SettingsWriteLogic::allowedKeys();
        QCOMPARE(keys.size(), 24);
        const auto fields = jsonObject(AppSettings());
        for (const auto& key : keys) {
            QVERIFY2(fields.contains(key), qPrintable(key));
            QVERIFY2(SettingsWriteLogic::validate(key, {}, {}), qPrintable(key));
        }
        for (const auto& key : SettingsWriteLogic::alwaysConfirmKeys())
            QVERIFY2(keys.contains(key), qPrintable(key));
    }

    void aModeLosesItsEndAndAPauseItsTime()
    {
        const TimePoint later(std::chrono::seconds(1772352900));
        AppSettings settings;
        settings.modeRevertAt = later;
        settings.pausedUntil = later;
        QVERIFY(
            SettingsWriteLogic::apply(QStringLiteral("mode"), QStringLiteral("focus"), settings));
        QVERIFY(!settings.modeRevertAt);
        QVERIFY(SettingsWriteLogic::apply(QStringLiteral("pausedIndefinitely"), true, settings));
        QCOMPARE(settings.pausedUntil, later);
        QVERIFY(SettingsWriteLogic::apply(QStringLiteral("pausedIndefinitely"), false, settings));
        QVERIFY(!settings.pausedUntil);
    }

    void colorsBelongToTheCurrentMascot()
    {
        AppSettings settings;
        settings.mascotColorScheme = QStringLiteral("brown");
        QVERIFY(
            SettingsWriteLogic::apply(QStringLiteral("mascot"), QStringLiteral("meme"), settings));
        QCOMPARE(settings.mascotColorScheme, QStringLiteral("brown"));
        QVERIFY(SettingsWriteLogic::apply(
            QStringLiteral("mascot"), QStringLiteral("axolotl"), settings));
        QCOMPARE(settings.mascotColorScheme, QStringLiteral("golden"));
        QVERIFY(SettingsWriteLogic::apply(
            QStringLiteral("mascotColorScheme"), QStringLiteral("pink"), settings));
        QVERIFY(!SettingsWriteLogic::apply(
            QStringLiteral("mascotColorScheme"), QStringLiteral("brown"), settings));
    }

    void passwordManagersStayExcluded()
    {
        const auto excluded = [](JSONValue::Array ids) {
            AppSettings settings;
            const auto summary =
                SettingsWriteLogic::apply(QStringLiteral("excludedBundleIDs"), ids, settings);
            return std::pair(summary.value_or(QString()), settings.excludedBundleIDs);
        };
        QVERIFY(excluded({})
            == std::pair(
                QStringLiteral("excluded apps → 7 bundle IDs"), AppSettings().excludedBundleIDs));
        const auto known = AppSettings::defaultExcludedBundleIDs().back();
        const auto [summary, ids] = excluded({ known, QStringLiteral("org.example.bank") });
        QCOMPARE(summary, QStringLiteral("excluded apps → 8 bundle IDs"));
        QCOMPARE(ids[0], known);
        QCOMPARE(ids[1], QStringLiteral("org.example.bank"));
    }

    void dataSourcesAreBuiltAnew()
    {
        AppSettings settings;
        settings.appDataSources = { { QUuid::createUuid(), QStringLiteral("Old"),
            QStringLiteral("/old") } };
        const auto folders =
            fromText(R"([{"name":" Notes ","path":"/n\n"},{"name":"Same","path":"/n","x":1}])");
        const auto summary = SettingsWriteLogic::apply(
            QStringLiteral("appDataSources"), JSONValue::fromJson(folders), settings);
        QCOMPARE(summary.value_or(QString()), QStringLiteral("app data sources → 2"));
        const auto [first, second] =
            std::pair(settings.appDataSources.at(0), settings.appDataSources.at(1));
        QVERIFY((first
            == AppDataSource { first.id, QStringLiteral("Notes"), QStringLiteral("/n"), true }));
        QVERIFY(!first.id.isNull() && first.id != second.id);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingsWriteLogicTest)
#include "SettingsWriteLogicTest.moc"
