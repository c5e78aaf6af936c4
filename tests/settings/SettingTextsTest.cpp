#include "settings/SettingTexts.h"

#include "settings/SettingsWriteLogic.h"
#include "support/TableRow.h"

#include <QSet>

namespace pobblewig {

class SettingTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatTheAssistantMayChangeHasALabelOfItsOwnAndAValue()
    {
        const auto keys = SettingsWriteLogic::allowedKeys();
        QSet<QString> labels;
        for (const auto& key : keys) {
            const auto& setting = *SettingsWriteLogic::allowed(key);
            const auto label = SettingTexts::label(setting);
            QVERIFY2(label != key && !SettingTexts::value(setting, {}).isEmpty(), qPrintable(key));
            labels.insert(label);
        }
        QCOMPARE(labels.size(), keys.size());
        QVERIFY(!SettingsWriteLogic::allowed(QStringLiteral("memoryEnabled")));
    }

    void aValueIsInWords_data()
    {
        QTest::addColumn<QString>("json");
        QTest::addColumn<QString>("words");
        row("mode", "'doNotDisturb'", "Do Not Disturb");
        row("roles", "['tutor', 'accountabilityPartner']", "Accountability partner, Tutor");
        row("roles", "[]", "none");
        row("companionPersona", "'deadpanRoommate'", "Deadpan Roommate");
        row("mascot", "'an axolotl'", "Axolotl");
        row("mascotColorScheme", "'brown'", "Brown");
        row("maxActivitySessions", "2000", "2000 sessions");
        row("activityRetentionDays", "1", "1 day");
        row("cloudSyncIntervalMinutes", "30", "30 minutes");
        row("classroomDeadlineReminderHours", "6", "6 hours");
        row("canvasDeadlineRemindersEnabled", "false", "off");
        row("pausedIndefinitely", "true", "on");
        row("canvasBaseURL", "'https://a.edu'", "https://a.edu");
        row("appDataSources", "[{'name':'%2','path':'/a'},{'name':'B','path':'~'}]",
            "%2 (/a), B (~)");
    }
    void aValueIsInWords()
    {
        QFETCH(QString, json);
        json.replace(u'\'', u'"');
        const auto key = QString::fromLatin1(QTest::currentDataTag());
        const auto array = QJsonDocument::fromJson('[' + json.toUtf8() + ']').array();
        AppSettings settings;
        QVERIFY(SettingsWriteLogic::apply(key, JSONValue::fromJson(array.first()), settings));
        QTEST(SettingTexts::value(*SettingsWriteLogic::allowed(key), settings), "words");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SettingTextsTest)
#include "SettingTextsTest.moc"
