#include "settings/AppSettings.h"

#include "support/JSONObject.h"
#include "support/TableRow.h"

#include <QJsonDocument>

namespace pobblewig {

class AppSettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachKeyCanBeAbsentOrNullButNotOfAnotherType()
    {
        const auto standard = jsonObject(AppSettings());
        AppSettings filled;
        filled.modeRevertAt = filled.pausedUntil = TimePoint(std::chrono::seconds(1772352900));
        filled.lastDailyBriefingDayKey = QStringLiteral("2026-03-01");
        const auto whole = jsonObject(filled);
        QCOMPARE(whole.size(), 37);
        for (const auto& key : whole.keys()) {
            auto expected = whole;
            expected[key] = standard[key];
            for (const auto type : { QJsonValue::Undefined, QJsonValue::Null }) {
                auto object = whole;
                object[key] = QJsonValue(type);
                const auto settings = json::decode<AppSettings>(object);
                QVERIFY2(settings && jsonObject(*settings) == expected, qPrintable(key));
            }
            auto object = whole;
            object[key] = QJsonArray { QJsonArray { 1 } };
            const auto settings = json::decode<AppSettings>(object);
            QVERIFY(!settings && settings.error().path.startsWith(QStringLiteral("$.") + key));
        }
    }

    void theRoleOfAnEarlyVersionIsUnderstood_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("roles");
        row("tutor", R"({"persona": "codingTutor"})", "tutor");
        row("any other", R"({"persona": "coach"})", "accountabilityPartner");
        row("null roles", R"({"persona": "codingTutor", "roles": null})", "tutor");
        row("roles win", R"({"persona": "codingTutor", "roles": []})", "");
        row("no text", R"({"persona": 3})", "");
        row("neither", R"({"someday": [1]})", "");
    }
    void theRoleOfAnEarlyVersionIsUnderstood()
    {
        QFETCH(QString, text);
        const auto document = QJsonDocument::fromJson(text.toUtf8());
        const auto settings = json::decode<AppSettings>(document.object());
        QVERIFY(settings);
        QStringList roles;
        for (const auto role : settings->roles)
            roles.append(EnumNames::text(role));
        QTEST(roles.join(u','), "roles");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AppSettingsTest)
#include "AppSettingsTest.moc"
