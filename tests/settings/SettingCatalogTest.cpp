#include "settings/SettingCatalog.h"

#include "prompts/SettingInstructions.h"
#include "settings/ActionAutonomy.h"
#include "settings/SettingTexts.h"
#include "settings/SettingsWriteLogic.h"
#include "support/JSONObject.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

/// The text has single quotes.
QJsonValue value(QString text)
{
    const auto array = '[' + text.replace(u'\'', u'"').toUtf8() + ']';
    return QJsonDocument::fromJson(array).array().first();
}

QString apply(const char* key, const char* text, AppSettings& settings)
{
    const auto given = JSONValue::fromJson(value(QString::fromLatin1(text)));
    return SettingsWriteLogic::apply(QString::fromLatin1(key), given, settings)
        .value_or(u"refused"_s);
}

/// The keys whose change to this value asks whatever is allowed.
QStringList asking(bool value)
{
    QStringList keys;
    for (const auto& setting : SettingCatalog::all()) {
        if (SettingsWriteLogic::alwaysAsks(setting.key.toString(), value))
            keys.append(setting.key.toString());
    }
    return keys;
}

/// Nothing is stored of a value that is refused.
void refused(const char* key, const char* text, const char* demand)
{
    row(key, text, "", "%1 must be %2", demand);
}

} // namespace

class SettingCatalogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aValueIsStoredAndSaidOrRefusedAndExplained_data()
    {
        columns<QString, QString, QString, QString>("text", "stored", "outcome", "words");
        const auto same = "%1 → %2";
        row("mode", "'doNotDisturb'", "'doNotDisturb'", same, "Do Not Disturb");
        row("roles", "[]", "[]", same, "none");
        row("roles", "['tutor','accountabilityPartner','tutor']",
            "['accountabilityPartner','tutor']", "roles → Accountability partner + Tutor",
            "Accountability partner, Tutor");
        row("companionPersona", "'\\n DEADPANROOMMATE '", "'deadpanRoommate'", "persona → %2",
            "Deadpan Roommate");
        row("mascot", "'a mouse'", "'mouse'", "form → %2 (Original)", "Mouse");
        row("mascot", "' An Axolotl\\n'", "'axolotl'", "form → %2 (Golden)", "Axolotl");
        row("mascotColorScheme", "'white'", "'white'", "color scheme → %2", "White");
        row("mascotSizeScale", "9", "3", same, "300%");
        row("pausedIndefinitely", "true", "true", "observation pause → %2", "on");
        row("canvasBaseURL", "'https://x'", "'https://x'", "Canvas URL → %2", "https://x");
        row("canvasSyncIntervalMinutes", "5", "15", "%1 → 15 min", "15 minutes");
        row("classroomSyncIntervalMinutes", "59.5", "60", "%1 → 60 min", "60 minutes");
        row("calendarSyncIntervalMinutes", "1e300", "360", "%1 → 360 min", "360 minutes");
        row("classroomDeadlineReminderHours", "73", "72", "%1 → 72h", "72 hours");
        row("maxActivitySessions", "99", "100", "%1 → 100", "100 sessions");
        row("activityRetentionDays", "0", "1", "%1 → 1 days", "1 day");
        row("themePreference", "'dark'", "'dark'", same, "Dark");
        row("accentChoice", "'teal'", "'teal'", same, "Teal");
        row("dateLanguage", "'de_DE'", "'de_DE'", same, "Deutsch (Deutschland)");
        row("sleepAfterMinutes", "0", "1", "%1 → 1 min", "1 minute");
        row("keepConversations", "'month'", "'month'", same, "For 30 days");
        row("actionConfirmations", "['reminder_write']",
            "{'calendar_write':false,'reminder_write':true,'settings_change':false}", same,
            "Adding a reminder");
        refused("mode", "'Focus'",
            "one of: openEnded, focus, studying, relaxing, exercising, doNotDisturb");
        refused("roles", "['tutor','friend']", "an array of: accountabilityPartner, tutor");
        refused("companionPersona", "'deadpan roommate'",
            "one of: classic, deadpanRoommate, doomedCreature, judgmentalAnimal, "
            "allergicToSincerity, devotedPet");
        refused("mascot", "'skrit'", "one of: mouse, axolotl, meme");
        refused("mascot", "'a  mouse'", "one of: mouse, axolotl, meme");
        refused("mascotColorScheme", "'pink'",
            "one of: original, brown, white (for the current mascot)");
        refused("pausedIndefinitely", "0", "a boolean");
        refused("cloudSyncEnabled", "'true'", "a boolean");
        refused("maxActivitySessions", "'100'", "a number");
        refused("excludedBundleIDs", "['a', ' \\n']", "an array of bundle-ID strings");
        for (const auto* url :
            { "'https://'", "'http://x'", "'https://canvas.school.edu@evil.example'",
                "'https://evil.example\\\\@school.edu'", "'https://[::1]/'",
                "'https://ev\u0456l.example'", "'https://evil.example /'" })
            refused(
                "canvasBaseURL", url, "an https:// URL with a plain host name and no user name");
        for (const auto* folder : { "'name':'a','path':' '", "'name':' ','path':'/n'",
                 "'name':'~/Documents','path':'/'", "'name':'Lectures (/home','path':'/n'",
                 "'name':'Lecture slides of all the courses of mine','path':'/n'",
                 "'name':'a','path':'n'", "'name':'a','path':'/n\u200b'" })
            refused("appDataSources", qPrintable(u"[{%1}]"_s.arg(QString::fromUtf8(folder))),
                R"(an array of {"name":"...","path":"..."} entries, each name at most 40 )"
                "characters without / and ~, each path absolute or below ~");
    }
    void aValueIsStoredAndSaidOrRefusedAndExplained()
    {
        QFETCH(QString, text);
        QFETCH(QString, stored);
        QFETCH(QString, outcome);
        QFETCH(QString, words);
        const auto key = QString::fromLatin1(QTest::currentDataTag());
        const auto& setting = *SettingCatalog::find(key);
        AppSettings settings;
        const auto before = jsonObject(settings);
        const auto given = JSONValue::fromJson(value(text));
        const auto refusal = SettingsWriteLogic::validate(key, given, settings);
        const auto written = SettingsWriteLogic::write(setting, given, settings);
        outcome.replace(u"%1"_s, key).replace(u"%2"_s, words);
        QCOMPARE(written ? *written : written.error().reason, outcome);
        QCOMPARE(written.has_value(), !stored.isEmpty());
        if (SettingsWriteLogic::allowed(key))
            QCOMPARE(refusal, written ? std::nullopt : std::optional(written.error().reason));
        auto after = jsonObject(settings);
        if (written) {
            QCOMPARE(after[key], value(stored));
            QCOMPARE(SettingTexts::value(setting, settings), words);
            // A new mascot may bring new colours; nothing else changes with a key.
            for (const auto& own : { key, u"mascotColorScheme"_s })
                after[own] = before[own];
        }
        QVERIFY(after == before);
    }

    void everySettingHasARowThatReachesNothingElse()
    {
        const auto before = jsonObject(AppSettings());
        auto others = before.keys();
        for (const auto& setting : SettingCatalog::all()) {
            const auto key = setting.key.toString();
            QVERIFY2(others.removeOne(key), qPrintable(key));
            // What is no switch and no number has rows of its own above.
            if (setting.kind.index() > 1)
                continue;
            const auto isSwitch = before[key].isBool();
            const auto value = isSwitch ? JSONValue(!before[key].toBool()) : JSONValue(1e9);
            AppSettings settings;
            QVERIFY(SettingsWriteLogic::write(setting, value, settings));
            auto after = jsonObject(settings);
            QVERIFY2(after[key] != before[key], qPrintable(key));
            after[key] = before[key];
            QVERIFY2(after == before, qPrintable(key));
        }
        QCOMPARE(others.join(u' '), u"hasCompletedOnboarding screenCaptureRequestedBefore version");
    }

    void theAssistantKeepsToItsOwn()
    {
        QStringList users;
        QStringList labels;
        for (const auto& setting : SettingCatalog::all()) {
            labels.append(SettingTexts::label(setting));
            if (!SettingsWriteLogic::allowed(setting.key.toString()))
                users.append(setting.key.toString());
        }
        QCOMPARE(labels.removeDuplicates(), 0);
        QCOMPARE(users.join(u' '),
            u"mascotSizeScale memeModeEnabled memoryEnabled keepConversations actionConfirmations "
            "dailyBriefingEnabled themePreference accentChoice dateLanguage soundsEnabled "
            "sleepAfterMinutes");
        QCOMPARE(asking(true).join(u' '),
            u"excludedBundleIDs maxActivitySessions activityRetentionDays canvasBaseURL "
            "canvasSyncEnabled classroomSyncEnabled calendarSyncEnabled remindersSyncEnabled "
            "cloudSyncEnabled appDataSources");
        auto lifting = asking(false);
        for (const auto& key : asking(true))
            lifting.removeOne(key);
        QCOMPARE(lifting.join(u' '), u"pausedIndefinitely");
        const auto refusal = u"'%1' is not a setting the assistant may change"_s;
        for (const auto& key : { u"memoryEnabled"_s, u"%1"_s })
            QCOMPARE(SettingsWriteLogic::validate(key, false, {}), refusal.arg(key));
    }

    void aRowIsAllThatASettingTakes()
    {
        static constexpr SettingUnit naps { "%1 nap", "%1 naps", u" naps" };
        const Setting row { .key = u"dailyNaps",
            .label = "Naps a day",
            .page = SettingsPage::activity,
            .assistant = AssistantAccess::proposed,
            .alwaysAsks = AlwaysAsks::all,
            .kind = NumberSetting { &AppSettings::maxActivitySessions, 1, 3, &naps },
            .sample = u"2 at best" };
        const SettingCatalog::Rows rows(&row, 1);
        const QString key = row.key.toString();
        AppSettings settings;
        QCOMPARE(SettingsWriteLogic::validate(key, true, settings, rows),
            u"dailyNaps must be a number"_s);
        QCOMPARE(SettingsWriteLogic::apply(key, 9, settings, rows).value_or(QString()),
            u"dailyNaps → 3 naps"_s);
        QCOMPARE(SettingTexts::value(row, settings), u"3 naps"_s);
        QVERIFY(SettingsWriteLogic::alwaysAsks(key, 9, rows));
        QCOMPARE(Prompts::settingEncodings(rows), u"a whole number for dailyNaps (2 at best)"_s);
        QCOMPARE(SettingCatalog::onPage(SettingsPage::activity, rows).size(), 1u);
    }

    void anActionAsksUnlessItsQuestionIsSwitchedOff()
    {
        AppSettings settings;
        QStringList asking;
        for (const auto* actionClass : { "calendar_write", "settings_change", "memory_forget",
                 "memory_delete_all", "data_source_remove", "activity_delete_history" }) {
            const auto name = QString::fromLatin1(actionClass);
            QVERIFY(ActionAutonomy::requiresConfirmation(name, settings));
            settings.actionConfirmations[name] = name == u"settings_change";
            if (ActionAutonomy::requiresConfirmation(name, settings))
                asking.append(name);
        }
        QCOMPARE(asking.join(u' '),
            u"settings_change memory_forget memory_delete_all data_source_remove "
            "activity_delete_history");
    }

    void whatElseChangesWithASetting()
    {
        AppSettings settings;
        settings.modeRevertAt = settings.pausedUntil = TimePoint(std::chrono::seconds(1));
        apply("mode", "'focus'", settings);
        apply("pausedIndefinitely", "true", settings);
        QVERIFY(!settings.modeRevertAt && settings.pausedUntil);
        apply("pausedIndefinitely", "false", settings);
        QVERIFY(!settings.pausedUntil);

        settings.mascotColorScheme = u"brown"_s;
        QCOMPARE(apply("mascot", "'MEME'", settings), u"form → Meme (Brown)"_s);
        QCOMPARE(settings.mascotColorScheme, u"brown"_s);
        apply("mascot", "'axolotl'", settings);
        QCOMPARE(settings.mascotColorScheme, u"golden"_s);
        QVERIFY(apply("mascotColorScheme", "'pink'", settings) != u"refused");
        QCOMPARE(apply("mascotColorScheme", "'brown'", settings), u"refused"_s);
    }

    void passwordManagersStayExcluded()
    {
        AppSettings settings;
        QCOMPARE(apply("excludedBundleIDs", "['com.dashlane.dashlanephonefinal', 'a']", settings),
            u"excluded apps → 8 bundle IDs"_s);
        QCOMPARE(settings.excludedBundleIDs[1], u"a"_s);
        apply("excludedBundleIDs", "[]", settings);
        QVERIFY(settings.excludedBundleIDs == AppSettings::defaultExcludedBundleIDs());
    }

    void dataSourcesAreBuiltAnew()
    {
        AppSettings settings;
        settings.appDataSources = { { QUuid::createUuid(), {}, {} } };
        const auto folders = "[{'name':' %2 ','path':'/n\\n'},{'name':'Same','path':'~'}]";
        QCOMPARE(apply("appDataSources", folders, settings), u"app data sources → 2"_s);
        auto& sources = settings.appDataSources;
        QVERIFY(!sources[0].id.isNull() && sources[0].id != sources[1].id && sources[0].enabled);
        sources[1].enabled = false;
        const auto& setting = *SettingCatalog::find(u"appDataSources"_s);
        QCOMPARE(SettingTexts::value(setting, settings), u"/n (%2), ~ (Same, off)"_s);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingCatalogTest)
#include "SettingCatalogTest.moc"
